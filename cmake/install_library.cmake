# Installs libnevrel: header, libraries, CMake package and pkg-config file.
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/nevrel)

install(TARGETS nevrel_static nevrel_shared EXPORT nevrelTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/include/nevrel.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT nevrelTargets NAMESPACE nevrel:: DESTINATION ${package_folder} COMPONENT development)

write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/nevrelConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/nevrelConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/nevrelConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

# The pkg-config file finds the rest from where it lies, so that the folder may be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH NEVREL_PREFIX_FROM_PKGCONFIG
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" NEVREL_PREFIX_FROM_PKGCONFIG "${NEVREL_PREFIX_FROM_PKGCONFIG}")
set(NEVREL_PKGCONFIG_LIBDIR "\${prefix}")
cmake_path(APPEND NEVREL_PKGCONFIG_LIBDIR ${CMAKE_INSTALL_LIBDIR})
set(NEVREL_PKGCONFIG_INCLUDEDIR "\${prefix}")
cmake_path(APPEND NEVREL_PKGCONFIG_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/nevrel.pc.in ${CMAKE_CURRENT_BINARY_DIR}/nevrel.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/nevrel.pc DESTINATION ${pkgconfig_folder} COMPONENT development)
