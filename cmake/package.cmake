# The zip that people install from: the module, the OpenFX bundle, their licence and the user guide.
install(FILES $<TARGET_FILE:nevrel_module> DESTINATION .)
install(DIRECTORY ${CMAKE_BINARY_DIR}/nevrel.ofx.bundle DESTINATION .)
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
install(FILES docs/user-guide.html DESTINATION .)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
include(CPack)
