# An overlay port inside the source tree: vcpkg install corvane --overlay-ports=packaging/vcpkg
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
vcpkg_check_features(OUT_FEATURE_OPTIONS options FEATURES tools CORVANE_TOOLS tools CORVANE_FIT)
vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS ${options} -DCORVANE_TESTS=OFF -DCORVANE_DOTNET_BUILD=OFF
)
vcpkg_cmake_install()
# The data home lies beside the libraries, for both configurations.
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/corvane)
vcpkg_fixup_pkgconfig()
if("tools" IN_LIST FEATURES)
  vcpkg_copy_tools(TOOL_NAMES corvane AUTO_CLEAN)
endif()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/packaging/debian/copyright")
