# The module itself: everything of nevrel_effect and the core in one file that exports EntryPointFunc and nothing else.
if(WIN32)
  enable_language(RC)
  set_source_files_properties(resources/nevrel.rc PROPERTIES
    OBJECT_DEPENDS "${PROJECT_SOURCE_DIR}/resources/dialogs.h;${PROJECT_SOURCE_DIR}/resources/effect_identity.h")
endif()

# nevrel_add_module(NAME ENTRY FOLDER): a build of the module with this entry, in a folder of the build's.
function(nevrel_add_module name entry folder)
  add_library(${name} MODULE $<TARGET_OBJECTS:nevrel_effect> $<TARGET_OBJECTS:${entry}>)
  target_link_libraries(${name} PRIVATE nevrel_core ${CMAKE_DL_LIBS})
  nevrel_plugin_file(${name} ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${folder})
  if(WIN32)
    set_target_properties(${name} PROPERTIES SUFFIX .aex)
    target_sources(${name} PRIVATE resources/nevrel.rc)
    target_include_directories(${name} PRIVATE ${CMAKE_BINARY_DIR})  # the version
    target_compile_definitions(${name} PRIVATE $<TARGET_PROPERTY:${entry},INTERFACE_COMPILE_DEFINITIONS>)
  endif()
endfunction()

nevrel_add_module(nevrel_module nevrel_entry .)
set(parts nevrel_core nevrel_effect nevrel_entry)
if(NEVREL_MULTI_FRAME)
  nevrel_add_module(nevrel_module_multi_frame nevrel_entry_multi_frame mfr)
  list(APPEND parts nevrel_entry_multi_frame)
endif()
if(MINGW)
  foreach(part IN LISTS parts)  # the same symbols wherever it is built
    target_compile_options(${part} PRIVATE -g -ffile-prefix-map=${PROJECT_SOURCE_DIR}=nevrel
                                              -ffile-prefix-map=${CMAKE_BINARY_DIR}=nevrel/build)
  endforeach()
endif()

# NEVREL_COVERAGE: counts what tests reach of the module's code, compiled just as it is written.
if(NEVREL_COVERAGE)
  foreach(part IN LISTS parts)
    target_compile_options(${part} PRIVATE --coverage -fprofile-update=atomic -O0)
  endforeach()
  target_link_options(nevrel_options INTERFACE --coverage)
endif()
