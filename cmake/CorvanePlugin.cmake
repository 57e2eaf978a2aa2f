# corvane_add_plugin(<name> <sources>...): an equation of state as a loadable library.
#
# <name> is the name that attach1 gets (PR), or <equation>+<mixing theory> for attachN (PR+vdW1). The
# library is called libth<name>.dll on every platform, exports its factory and destroyer alone, and is
# put into the folder CORVANE_PLUGIN_OUTPUT (default: CorvaneS in the build directory), so that a
# program that runs beside that folder finds it.
function(corvane_add_plugin name)
  # Those of the data home; plug-ins of tests are loaded only.
  if(CORVANE_STATIC_PLUGINS AND CORVANE_PLUGIN_OUTPUT STREQUAL "${CORVANE_BUILD_HOME}/CorvaneS")
    corvane_add_static_plugin(${name} ${ARGN})
  endif()
  if(EMSCRIPTEN)
    return() # nothing is loaded there
  endif()
  string(REPLACE "+" "_" target "corvane_plugin_${name}")
  add_library(${target} MODULE ${ARGN})
  target_link_libraries(${target} PRIVATE corvane::corvane corvane::numelo)
  target_compile_features(${target} PRIVATE cxx_std_20)
  # Without errno, a logarithm whose value nobody needs beside its slope is not computed; no number
  # changes.
  target_compile_options(${target} PRIVATE -ffp-contract=off -fno-math-errno $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  if(TARGET corvane_options)
    target_link_libraries(${target} PRIVATE corvane_options)
  endif()
  if(NOT CORVANE_PLUGIN_OUTPUT)
    set(CORVANE_PLUGIN_OUTPUT ${CMAKE_BINARY_DIR}/CorvaneS)
  endif()
  set_target_properties(
    ${target}
    PROPERTIES OUTPUT_NAME "th${name}"
               PREFIX "lib"
               SUFFIX ".dll"
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               LIBRARY_OUTPUT_DIRECTORY "${CORVANE_PLUGIN_OUTPUT}"
               INSTALL_RPATH "$ORIGIN/../..")
  # Those in the data home of the build tree are installed; plug-ins of tests are not.
  if(CORVANE_PLUGIN_OUTPUT STREQUAL "${CORVANE_BUILD_HOME}/CorvaneS")
    set_property(GLOBAL APPEND PROPERTY CORVANE_PLUGINS ${target})
  endif()
endfunction()

# corvane_add_static_plugin(<name> <sources>...): the same linked into programs instead of loaded, as
# the object library corvane_static_<name>. With CORVANE_STATIC_PLUGINS there is one for every plug-in,
# and corvane_static_plugins holds them all; attach1 and attachN look there first.
function(corvane_add_static_plugin name)
  string(REPLACE "+" "_" target "corvane_static_${name}")
  add_library(${target} OBJECT ${ARGN})
  target_link_libraries(${target} PUBLIC $<TARGET_NAME_IF_EXISTS:corvane::kit> corvane::corvane corvane::numelo)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_definitions(${target} PRIVATE CORVANE_STATIC_PLUGIN="${name}")
  target_compile_options(${target} PRIVATE -ffp-contract=off -fno-math-errno)
  if(TARGET corvane_options)
    target_link_libraries(${target} PRIVATE corvane_options)
  endif()
  set_property(GLOBAL APPEND PROPERTY CORVANE_STATIC ${target})
endfunction()

# corvane_add_equation(<name> [MIXING <theory>] <sources>...): an equation on the authors' kit
# (CORVANE_EQUATION, CORVANE_FORMULA). One library holds the pure fluid and its mixtures; with MIXING it is put beside
# itself as libth<name>+<theory>.dll, where attachN looks.
function(corvane_add_equation name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "MIXING" "")
  corvane_add_plugin(${name} ${arg_UNPARSED_ARGUMENTS})
  if(TARGET corvane::kit AND NOT EMSCRIPTEN)
    target_link_libraries(corvane_plugin_${name} PRIVATE corvane::kit)
  endif()
  if(arg_MIXING AND NOT EMSCRIPTEN)
    add_custom_command(
      TARGET corvane_plugin_${name}
      POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E copy "$<TARGET_FILE:corvane_plugin_${name}>"
              "$<TARGET_FILE_DIR:corvane_plugin_${name}>/libth${name}+${arg_MIXING}.dll"
      VERBATIM)
    get_property(installed GLOBAL PROPERTY CORVANE_PLUGINS)
    if(corvane_plugin_${name} IN_LIST installed)
      set_property(GLOBAL APPEND PROPERTY CORVANE_MIXING "${name}+${arg_MIXING}")
    endif()
  endif()
endfunction()

# corvane_install_plugins(<destination> <component>): all plug-ins of the data home.
function(corvane_install_plugins destination component)
  get_property(plugins GLOBAL PROPERTY CORVANE_PLUGINS)
  if(NOT plugins)
    return()
  endif()
  install(TARGETS ${plugins} LIBRARY DESTINATION ${destination} COMPONENT ${component})
  # Equations that hold their mixtures: the installed library once more, with its new run path.
  get_property(mixing GLOBAL PROPERTY CORVANE_MIXING)
  foreach(name IN LISTS mixing)
    string(REGEX REPLACE "\\+.*" "" pure "${name}")
    install(CODE "set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${destination}\")
file(COPY_FILE \"\${folder}/libth${pure}.dll\" \"\${folder}/libth${name}.dll\")
list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${CMAKE_INSTALL_PREFIX}/${destination}/libth${name}.dll\")"
            COMPONENT ${component})
  endforeach()
endfunction()
