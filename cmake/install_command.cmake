# Installs the command with its module, manual page, completions and documents, and makes a Debian package of them and
# the OpenFX bundle.
include(GNUInstallDirs)

set(texts ${CMAKE_CURRENT_BINARY_DIR}/texts)
file(MAKE_DIRECTORY ${texts})
set(changelog ${texts}/changelog)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${changelog} "nevrel (${PROJECT_VERSION}) stable; urgency=low\n\n  * Version ${PROJECT_VERSION}.\n\n -- "
                        "${NEVREL_MAINTAINER}  ${date}\n")
add_custom_command(OUTPUT ${texts}/nevrel.1.gz ${texts}/nevrel ${texts}/_nevrel ${changelog}.gz
  COMMAND nevrel_command manual > ${texts}/nevrel.1
  COMMAND nevrel_command completion bash > ${texts}/nevrel
  COMMAND nevrel_command completion zsh > ${texts}/_nevrel
  COMMAND gzip -9nf ${texts}/nevrel.1
  COMMAND gzip -9nfk ${changelog}
  DEPENDS nevrel_command VERBATIM)
add_custom_target(nevrel_texts ALL DEPENDS ${texts}/nevrel.1.gz)

set(component COMPONENT command)
install(TARGETS nevrel_command ${component})
install(TARGETS nevrel_module nevrel_pictures LIBRARY DESTINATION ${NEVREL_MODULE_FOLDER} ${component})
install(FILES ${texts}/nevrel.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${component})
install(FILES ${texts}/nevrel DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${component})
install(FILES ${texts}/_nevrel DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions ${component})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE RENAME copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} ${component})
install(FILES ${changelog}.gz ${PROJECT_SOURCE_DIR}/docs/nevrel.md ${PROJECT_SOURCE_DIR}/docs/farms.md
              ${PROJECT_SOURCE_DIR}/docs/hosts.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR} ${component})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "smooths the stair-stepped edges of animation cels and line art")
set(CPACK_PACKAGE_DESCRIPTION "Measures every staircase in a picture's edges and blends along it:
lines keep their weight, flat paint keeps its value to the last bit.
For pictures and sequences in PNG, TIFF, TGA, BMP, OpenEXR and DPX, on
desktops and render farms.")
set(CPACK_COMPONENTS_ALL command openfx)
if(NEVREL_BUILD_FREI0R)
  list(APPEND CPACK_COMPONENTS_ALL frei0r)
endif()
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME nevrel)
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME nevrel)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${NEVREL_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
