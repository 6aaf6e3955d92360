# Where things are installed, the package file for hosts and drivers, and the Debian packages.
include(CMakePackageConfigHelpers)

configure_package_config_file(cmake/Kx300ClientConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Kx300Client
  PATH_VARS KX300_PLUGIN_DIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Kx300Client COMPONENT devel)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kx300-client)
set(CPACK_PACKAGE_VENDOR "KX300 client maintainers")
set(CPACK_PACKAGE_CONTACT "KX300 client maintainers <maintainers@example.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "TesselView plug-in for KX300 G4 6-20 kVA UPSs")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL plugin devel tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The sample driver binds to the plug-in, which lies outside the loader's path.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME kx300-client)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVEL_PACKAGE_NAME kx300-client-dev)
set(CPACK_DEBIAN_DEVEL_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVEL_PACKAGE_DEPENDS "kx300-client, qtbase5-dev")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME kx300-client-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "kx300-client")
set(CPACK_COMPONENT_PLUGIN_DESCRIPTION "The plug-in and its translations.")
set(CPACK_COMPONENT_DEVEL_DESCRIPTION "Headers and CMake package file for hosts and drivers.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Development host, UPS simulator and sample driver.")
include(CPack)
