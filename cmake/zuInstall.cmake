# Installation: headers under include/zu/<subsystem>/, the shared library,
# the message catalogues, a CMake package giving zu::utility, and a
# pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS zuutility EXPORT zuutilityTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/zu/zuutility.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zu)
get_property(zu_catalogues GLOBAL PROPERTY ZU_CATALOGUES)
install(FILES ${zu_catalogues} DESTINATION ${CMAKE_INSTALL_DATADIR}/zuutility)

install(EXPORT zuutilityTargets
  NAMESPACE zu::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zuutility)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zuutilityConfig.cmake.in
  ${PROJECT_BINARY_DIR}/zuutilityConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zuutility)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zuutilityConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zuutilityConfig.cmake
              ${PROJECT_BINARY_DIR}/zuutilityConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zuutility)

configure_file(${PROJECT_SOURCE_DIR}/cmake/zuutility.pc.in
  ${PROJECT_BINARY_DIR}/zuutility.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zuutility.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
