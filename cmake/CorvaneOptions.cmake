# Compiler options that every target of this project shares, as the interface target corvane_options.
add_library(corvane_options INTERFACE)
target_compile_options(
  corvane_options
  INTERFACE -Wall -Wextra -Wshadow -Wno-unused-parameter
            -ffp-contract=off # the same numbers on every machine
            # nothing is merged between plug-ins that are loaded locally; Clang never does that
            $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
)
if(CORVANE_BATCHES) # what they make of unnamed namespaces: a neighbour's constants, members of their types
  target_compile_options(corvane_options INTERFACE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(CORVANE_WERROR)
  target_compile_options(corvane_options INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE) # plug-ins may come without run-time types, which the check of virtual tables asks for
  target_compile_options(
    corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all
                              -fno-omit-frame-pointer
  )
  target_link_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE})
endif()
if(CORVANE_COVERAGE)
  target_compile_options(corvane_options INTERFACE --coverage -O0)
  target_link_options(corvane_options INTERFACE --coverage)
endif()
