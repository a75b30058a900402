# cpack -G DEB: four Debian packages, one for each part that cmake --install knows. Configured with the prefix /usr.
#   libzorbase      the shared library       zorbase-tools   zor, its manual pages and completions
#   libzorbase-dev  what programs link       zorbase-doc     the reference and the examples
include(GNUInstallDirs)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zorbase)
set(CPACK_PACKAGE_VENDOR "the ZORBase authors")
set(ZORBASE_PACKAGER "the ZORBase authors <root@localhost>" CACHE STRING "Name and address in the Debian packages")
mark_as_advanced(ZORBASE_PACKAGER)
set(CPACK_PACKAGE_CONTACT ${ZORBASE_PACKAGER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development tools documentation)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/Finish.cmake)

string(TIMESTAMP ZORBASE_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)  # that of SOURCE_DATE_EPOCH where it is set
configure_file(cmake/debian/changelog.in changelog @ONLY)

# A component's package: name, section, and what apt shows of it.
macro(zorbase_package component name section summary description)
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${description}")
  install(FILES cmake/debian/copyright DESTINATION share/doc/${name} COMPONENT ${component})
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog DESTINATION share/doc/${name} COMPONENT ${component})
  install(FILES CHANGELOG.md DESTINATION share/doc/${name} RENAME NEWS COMPONENT ${component})
endmacro()

zorbase_package(runtime libzorbase libs
  "numerical geometry of a cutting machine: shared library"
  "Tool poses, their transforms and blends, smooth curves through measured poses\n\
that can be walked by arc length, solvers, spectra and filters. This package\n\
holds the library that programs load.")
zorbase_package(development libzorbase-dev libdevel
  "numerical geometry of a cutting machine: headers"
  "What C++20 programs are built with: the headers, the static library, and the\n\
descriptions for CMake and pkg-config.")
zorbase_package(tools zorbase-tools math
  "numerical geometry of a cutting machine: the command zor"
  "The command zor looks at files of measured tool poses, fits smooth paths\n\
through them, writes evenly spaced poses, moves and converts them, and shows\n\
the frequencies of a sampled signal.")
zorbase_package(documentation zorbase-doc doc
  "numerical geometry of a cutting machine: reference"
  "The reference with the theory of every part, as pages for a browser, and\n\
complete example programs.")

set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzorbase (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "zorbase-doc, cmake, pkgconf")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/ZORBase)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "libzorbase (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS gnuplot-nox)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

include(CPack)
