# What `cmake --install` puts where. The data home is <prefix>/lib/corvane.
include(CMakePackageConfigHelpers)

install(TARGETS corvane numelo EXPORT corvaneTargets LIBRARY DESTINATION lib FILE_SET HEADERS)
install(DIRECTORY CorvaneS DESTINATION lib/corvane)
if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/models)
  install(DIRECTORY models DESTINATION lib/corvane)
endif()
get_property(plugins GLOBAL PROPERTY CORVANE_PLUGINS)
if(plugins)
  install(TARGETS ${plugins} LIBRARY DESTINATION lib/corvane/CorvaneS)
endif()

install(EXPORT corvaneTargets NAMESPACE corvane:: DESTINATION lib/cmake/corvane)
configure_package_config_file(cmake/corvaneConfig.cmake.in ${CMAKE_BINARY_DIR}/corvaneConfig.cmake
                              INSTALL_DESTINATION lib/cmake/corvane)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/corvaneConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/corvaneConfig.cmake ${CMAKE_BINARY_DIR}/corvaneConfigVersion.cmake
              cmake/CorvanePlugin.cmake DESTINATION lib/cmake/corvane)
