# The module's builds and the OpenFX plug-in from a build of their own, by the preset NEVREL_MODULE_PRESET, where this
# build's compiler is not the one for what is delivered. Whoever uses their targets sees no difference.
include(ExternalProject)
set(targets nevrel_module nevrel_openfx)
set(files nevrel.aex nevrel.ofx.bundle/Contents/Win64/nevrel.ofx)
if(NEVREL_MULTI_FRAME)
  list(APPEND targets nevrel_module_multi_frame)
  list(APPEND files mfr/nevrel.aex)
endif()
set(copies)
foreach(file IN LISTS files)
  cmake_path(GET file PARENT_PATH folder)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/${folder})
  list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy_if_different <BINARY_DIR>/${file} ${CMAKE_BINARY_DIR}/${file})
  if(file MATCHES "[.]aex$")
    list(APPEND copies
      COMMAND ${CMAKE_COMMAND} -E copy_if_different <BINARY_DIR>/${file}.debug ${CMAKE_BINARY_DIR}/${file}.debug)
  endif()
endforeach()

ExternalProject_Add(nevrel_module_build
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${CMAKE_BINARY_DIR}/${NEVREL_MODULE_PRESET}  # apart from the folders of this build
  CONFIGURE_COMMAND ${CMAKE_COMMAND} -S <SOURCE_DIR> --preset ${NEVREL_MODULE_PRESET} -B <BINARY_DIR>
                    -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}
                    -DNEVREL_MULTI_FRAME=${NEVREL_MULTI_FRAME}
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target ${targets}
  BUILD_ALWAYS ON
  INSTALL_COMMAND "" ${copies})
foreach(target file IN ZIP_LISTS targets files)
  add_library(${target} MODULE IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${CMAKE_BINARY_DIR}/${file})
  add_dependencies(${target} nevrel_module_build)
endforeach()
