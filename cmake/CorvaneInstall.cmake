# What `cmake --install` puts where. The data home is <prefix>/lib/corvane. Components are those of the
# packages: library (with plug-ins), data, development, command, documentation, dotnet.
include(CMakePackageConfigHelpers)

install(TARGETS corvane numelo EXPORT corvaneTargets
        LIBRARY DESTINATION lib COMPONENT library NAMELINK_COMPONENT development
        FILE_SET HEADERS COMPONENT development)
if(TARGET corvane_kit)
  install(TARGETS corvane_kit EXPORT corvaneTargets ARCHIVE DESTINATION lib COMPONENT development)
endif()
if(TARGET corvane_fit)
  install(TARGETS corvane_fit corvane_text EXPORT corvaneTargets
          ARCHIVE DESTINATION lib COMPONENT development
          FILE_SET HEADERS COMPONENT development)
endif()
install(DIRECTORY CorvaneS DESTINATION lib/corvane COMPONENT data)
if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/models)
  install(DIRECTORY models DESTINATION lib/corvane COMPONENT data)
endif()
corvane_install_plugins(lib/corvane/CorvaneS library)

install(EXPORT corvaneTargets NAMESPACE corvane:: DESTINATION lib/cmake/corvane COMPONENT development)
configure_package_config_file(cmake/corvaneConfig.cmake.in ${CMAKE_BINARY_DIR}/corvaneConfig.cmake
                              INSTALL_DESTINATION lib/cmake/corvane)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/corvaneConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/corvaneConfig.cmake ${CMAKE_BINARY_DIR}/corvaneConfigVersion.cmake
              cmake/CorvanePlugin.cmake DESTINATION lib/cmake/corvane COMPONENT development)
configure_file(cmake/corvane.pc.in ${CMAKE_BINARY_DIR}/corvane.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/corvane.pc DESTINATION lib/pkgconfig COMPONENT development)
