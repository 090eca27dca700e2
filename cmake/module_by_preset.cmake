# The module from a build of its own, by the preset NEVREL_MODULE_PRESET, where this build's compiler is not the one for
# what is delivered. Whoever uses the target nevrel_module sees no difference.
include(ExternalProject)
set(module_file ${CMAKE_BINARY_DIR}/nevrel.aex)
ExternalProject_Add(nevrel_module_build
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${CMAKE_BINARY_DIR}/module
  CONFIGURE_COMMAND ${CMAKE_COMMAND} -S <SOURCE_DIR> --preset ${NEVREL_MODULE_PRESET} -B <BINARY_DIR>
                    -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target nevrel_module
  BUILD_ALWAYS ON
  INSTALL_COMMAND ${CMAKE_COMMAND} -E copy_if_different <BINARY_DIR>/nevrel.aex ${module_file})
add_library(nevrel_module MODULE IMPORTED GLOBAL)
set_target_properties(nevrel_module PROPERTIES IMPORTED_LOCATION ${module_file})
add_dependencies(nevrel_module nevrel_module_build)
