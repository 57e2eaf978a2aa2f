# corvane_add_plugin(<name> <sources>...): an equation of state as a loadable library.
#
# <name> is the name that attach1 gets (PR), or <equation>+<mixing theory> for attachN (PR+vdW1). The
# library is called libth<name>.dll on every platform, exports its factory and destroyer alone, and is
# put into the folder CORVANE_PLUGIN_OUTPUT (default: CorvaneS in the build directory), so that a
# program that runs beside that folder finds it.
function(corvane_add_plugin name)
  string(REPLACE "+" "_" target "corvane_plugin_${name}")
  add_library(${target} MODULE ${ARGN})
  target_link_libraries(${target} PRIVATE corvane::corvane corvane::numelo)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(${target} PRIVATE -ffp-contract=off $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
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
