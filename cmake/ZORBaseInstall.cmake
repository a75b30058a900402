# cmake --install: the library, shared and static side by side, its headers, and what find_package and pkg-config need to find
# them. Nothing installed holds a path of this machine, so that the tree may be moved. The parts are components:
#   runtime        the shared library              tools           zor, its manual pages and completions
#   development    headers and link libraries      documentation   the reference, built by the target docs
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZORBase)
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# One set of targets for each kind of library; both name it ZORBase::ZORBase, and ZORBaseConfig.cmake loads one of them.
function(zorbase_install_library target kind)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ZORBase)
  install(TARGETS ${target} EXPORT ZORBase-${kind}-targets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    RUNTIME COMPONENT runtime
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(EXPORT ZORBase-${kind}-targets NAMESPACE ZORBase:: DESTINATION ${package_folder} COMPONENT development)
endfunction()

if(BUILD_SHARED_LIBS)
  zorbase_install_library(ZORBase shared)
else()
  zorbase_install_library(ZORBase static)
endif()
if(TARGET ZORBaseStatic)
  zorbase_install_library(ZORBaseStatic static)
endif()

install(DIRECTORY ZORBase ${PROJECT_BINARY_DIR}/include/ZORBase DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development FILES_MATCHING PATTERN *.h)

configure_package_config_file(cmake/ZORBaseConfig.cmake.in ZORBaseConfig.cmake INSTALL_DESTINATION ${package_folder}
  NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(ZORBaseConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZORBaseConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/ZORBaseConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

# Seen from where the file itself lies.
file(RELATIVE_PATH ZORBASE_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/zorbase.pc.in zorbase.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zorbase.pc DESTINATION ${pkgconfig_folder} COMPONENT development)

if(TARGET zor)
  install(TARGETS zor COMPONENT tools)
  # zsh looks in another folder below /usr than it does elsewhere.
  set(zsh_folder zsh/site-functions)
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(zsh_folder zsh/vendor-completions)
  endif()
  install(DIRECTORY ${ZORBASE_PAGES}/ DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT tools PATTERN zsh EXCLUDE)
  install(FILES ${ZORBASE_PAGES}/zsh/_zor DESTINATION ${CMAKE_INSTALL_DATADIR}/${zsh_folder} COMPONENT tools)
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    # Anywhere but where the system looks by itself, zor finds the library that lies beside it.
    file(RELATIVE_PATH library_from_zor ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zor PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_zor}")
  endif()
endif()

# There once the target docs was built.
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zorbase-doc
  COMPONENT documentation OPTIONAL)
install(DIRECTORY examples data DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zorbase-doc COMPONENT documentation)

if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  include(ZORBasePackages)
else()
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zorbase COMPONENT development)
endif()
