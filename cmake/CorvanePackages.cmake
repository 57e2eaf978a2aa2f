# Debian packages: `cpack -G DEB` in a build tree, or scripts/deb.
set(folder ${CMAKE_BINARY_DIR}/packaging)
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
install(DIRECTORY docs/ DESTINATION share/doc/corvane/docs COMPONENT documentation EXCLUDE_FROM_ALL)
install(DIRECTORY examples DESTINATION share/doc/corvane COMPONENT documentation EXCLUDE_FROM_ALL)
install(FILES README.md CITATION.cff DESTINATION share/doc/corvane COMPONENT documentation EXCLUDE_FROM_ALL)

set(CPACK_PACKAGE_NAME corvane)
set(CPACK_PACKAGE_CONTACT "The Corvane developers <corvane@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each has its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library data development command documentation)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON) # not of the others: each of their files would be looked at
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/corvane ${CMAKE_BINARY_DIR}/numelo)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)

# corvane_package(<component> <name> <section> <architecture> <what it depends on> <summary> <text>): the
# package with its copyright and changelog, which Debian asks of each.
set(equal "(= ${PROJECT_VERSION})")
function(corvane_package component name section architecture depends summary text)
  string(TOUPPER ${component} key)
  foreach(pair IN ITEMS "NAME;${name}" "SECTION;${section}" "ARCHITECTURE;${architecture}" "DEPENDS;${depends}")
    list(POP_FRONT pair variable)
    set(CPACK_DEBIAN_${key}_PACKAGE_${variable} "${pair}" PARENT_SCOPE)
  endforeach()
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  install(FILES ${debian}/copyright ${folder}/changelog.gz DESTINATION share/doc/${name} COMPONENT ${component}
          EXCLUDE_FROM_ALL)
  install(FILES ${debian}/${component}.lintian-overrides DESTINATION share/lintian/overrides RENAME ${name}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()
file(MAKE_DIRECTORY ${folder})
set(ignored "")
configure_file(packaging/debian/changelog.in ${folder}/changelog @ONLY)
execute_process(COMMAND gzip -9nkf ${folder}/changelog COMMAND_ERROR_IS_FATAL ANY)
corvane_package(library libcorvane${CORVANE_ABI} libs "" "corvane-data ${equal}"
  "thermodynamic properties from equations of state, library"
  "Properties of pure substances and mixtures and phase equilibria with\ncertificates, from equations of state that are loaded by name.\n.\nThis package has the shared libraries and the equations of state.")
corvane_package(data corvane-data science all ""
  "thermodynamic properties from equations of state, data"
  "Substances, parameter sets of equations of state, ideal-gas data, solids and\nviscosities, each with its source.")
corvane_package(development libcorvane-dev libdevel ""
  "libcorvane${CORVANE_ABI} ${equal}, libc6-dev"
  "thermodynamic properties from equations of state, development files"
  "Headers, CMake package and pkg-config file, for programs in C++ and C and for\nequations of state of one's own.")
corvane_package(command corvane science "" "libcorvane${CORVANE_ABI} ${equal}"
  "thermodynamic properties from equations of state, command line"
  "Tables, flashes, phase diagrams and pictures of pure substances and mixtures\nfrom a shell, with man pages and completion for bash and zsh.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS "gnuplot-nox, corvane-doc")
corvane_package(documentation corvane-doc doc all ""
  "thermodynamic properties from equations of state, documentation"
  "Theory, methods, verification and measured speed of the library, and example\nprograms.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${folder}/triggers ${folder}/shlibs)
set(provider "${CORVANE_ABI} libcorvane${CORVANE_ABI} (>= ${PROJECT_VERSION})\n")
file(WRITE ${folder}/shlibs "libcorvane ${provider}libnumelo ${provider}")
file(WRITE ${folder}/triggers "activate-noawait ldconfig\n")
include(CPack)
