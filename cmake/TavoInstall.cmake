# The package file for hosts and drivers, and what a build needs to be installed.
include(CMakePackageConfigHelpers)

configure_package_config_file(cmake/Kx300ClientConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Kx300Client
  PATH_VARS KX300_PLUGIN_DIR KX300_DRIVER_DIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/Kx300ClientConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Kx300Client COMPONENT devel)

# All that is installed, and no tests: what the demonstration and the packages need of a build.
add_custom_target(product DEPENDS kx300_client translations)
if(TAVO_TOOLS)
  add_dependencies(product devhost upssim sampledriver exampleservice)
endif()
