# What people install from, a zip and an installer: the module's builds, the user guide, and the licences of all that is in
# them. The zip has the OpenFX bundle, too.
install(FILES $<TARGET_FILE:nevrel_module> DESTINATION .)
install(DIRECTORY ${CMAKE_BINARY_DIR}/nevrel.ofx.bundle DESTINATION . PATTERN *.debug EXCLUDE)
if(NEVREL_MULTI_FRAME)
  install(FILES $<TARGET_FILE:nevrel_module_multi_frame> DESTINATION mfr)
endif()
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
install(FILES docs/user-guide.html DESTINATION .)

set(notice "nevrel.aex and nevrel.ofx hold parts of the libraries below, each under the licence that follows.\n")
foreach(library IN ITEMS
    "the C++ and support libraries of GCC|gcc-mingw-w64-base" "the runtime library of mingw-w64|mingw-w64-common")
  string(REPLACE "|" ";" library "${library}")
  list(GET library 0 name)
  list(GET library 1 package)
  file(READ /usr/share/doc/${package}/copyright licence)
  string(APPEND notice "\n\n==== ${name}, as Debian's package ${package} has them ====\n\n${licence}")
endforeach()
file(WRITE ${CMAKE_BINARY_DIR}/THIRD-PARTY.txt "${notice}")
install(FILES ${CMAKE_BINARY_DIR}/THIRD-PARTY.txt DESTINATION .)

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_VENDOR "${NEVREL_AUTHORS}")
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/installer/cpack_options.cmake)
list(PREPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake/installer)  # where CPack looks for its template
set(CPACK_MODULE_PATH ${CMAKE_MODULE_PATH})
set(CPACK_NEVREL_INSTALLER_FOLDER ${PROJECT_SOURCE_DIR}/cmake/installer)
set(CPACK_NEVREL_BUILD_NUMBER ${NEVREL_BUILD_NUMBER})
set(CPACK_NEVREL_COPYRIGHT "${NEVREL_COPYRIGHT}")
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
include(CPack)
