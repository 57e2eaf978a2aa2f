# Compiler options that every target of this project shares, as the interface target corvane_options.
add_library(corvane_options INTERFACE)
target_compile_options(
  corvane_options
  INTERFACE -Wall -Wextra -Wshadow -Wno-unused-parameter
            -ffp-contract=off # the same numbers on every machine
            # nothing is merged between plug-ins that are loaded locally; Clang never does that
            $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
)
if(CORVANE_WERROR)
  target_compile_options(corvane_options INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE}
                                                   -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE})
endif()
if(CORVANE_COVERAGE)
  target_compile_options(corvane_options INTERFACE --coverage -O0)
  target_link_options(corvane_options INTERFACE --coverage)
endif()
