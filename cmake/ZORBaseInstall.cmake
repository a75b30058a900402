# cmake --install: the library, its headers and a package that find_package(ZORBase) finds.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZORBase)

install(TARGETS ZORBase EXPORT ZORBaseTargets INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ZORBase DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h)
install(EXPORT ZORBaseTargets FILE ZORBaseConfig.cmake NAMESPACE ZORBase:: DESTINATION ${package_folder})
write_basic_package_version_file(ZORBaseConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZORBaseConfigVersion.cmake DESTINATION ${package_folder})
if(TARGET zor)
  install(TARGETS zor)
endif()
