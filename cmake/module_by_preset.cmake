# The module from a build of its own, by the preset NEVREL_MODULE_PRESET, where this build's compiler is not the one for
# what is delivered. Whoever uses the module's targets sees no difference.
include(ExternalProject)
set(module_targets nevrel_module)
set(module_files nevrel.aex)
if(NEVREL_MULTI_FRAME)
  list(APPEND module_targets nevrel_module_multi_frame)
  list(APPEND module_files mfr/nevrel.aex)
endif()
set(copies)
foreach(file IN LISTS module_files)
  foreach(name IN ITEMS ${file} ${file}.debug)
    list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy_if_different <BINARY_DIR>/${name} ${CMAKE_BINARY_DIR}/${name})
  endforeach()
endforeach()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/mfr)

ExternalProject_Add(nevrel_module_build
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${CMAKE_BINARY_DIR}/module
  CONFIGURE_COMMAND ${CMAKE_COMMAND} -S <SOURCE_DIR> --preset ${NEVREL_MODULE_PRESET} -B <BINARY_DIR>
                    -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}
                    -DNEVREL_MULTI_FRAME=${NEVREL_MULTI_FRAME}
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target ${module_targets}
  BUILD_ALWAYS ON
  INSTALL_COMMAND ${CMAKE_COMMAND} -E true ${copies})
foreach(target file IN ZIP_LISTS module_targets module_files)
  add_library(${target} MODULE IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${CMAKE_BINARY_DIR}/${file})
  add_dependencies(${target} nevrel_module_build)
endforeach()
