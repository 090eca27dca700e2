# The module itself: everything of nevrel_effect and the core in one file that exports EntryPointFunc and nothing else.
add_library(nevrel_module MODULE $<TARGET_OBJECTS:nevrel_effect>)
target_link_libraries(nevrel_module PRIVATE nevrel_core ${CMAKE_DL_LIBS})
set_target_properties(nevrel_module PROPERTIES LINKER_LANGUAGE CXX PREFIX "" OUTPUT_NAME nevrel)

if(WIN32)
  enable_language(RC)
  set_target_properties(nevrel_module PROPERTIES SUFFIX .aex)
  target_sources(nevrel_module PRIVATE resources/nevrel.rc)
  set_source_files_properties(resources/nevrel.rc PROPERTIES
    OBJECT_DEPENDS "${PROJECT_SOURCE_DIR}/resources/dialogs.h;${PROJECT_SOURCE_DIR}/resources/effect_identity.h")
endif()

if(MSVC)
  target_link_options(nevrel_module PRIVATE /DYNAMICBASE /NXCOMPAT /HIGHENTROPYVA)
elseif(WIN32)
  target_sources(nevrel_module PRIVATE module/mingw_exception_state.cpp)
  target_link_options(nevrel_module PRIVATE
    -Wl,--dynamicbase,--nxcompat,--high-entropy-va,--no-insert-timestamp $<$<CONFIG:Release>:-s>)
else()
  # Templates of the standard library are visible whatever the compiler was told; the linker hides them.
  set(exports ${CMAKE_CURRENT_LIST_DIR}/exports.map)
  target_link_options(nevrel_module PRIVATE -Wl,--version-script=${exports})
  set_target_properties(nevrel_module PROPERTIES LINK_DEPENDS ${exports})
endif()

# NEVREL_COVERAGE: counts what tests reach of the module's code, compiled just as it is written.
if(NEVREL_COVERAGE)
  target_compile_options(nevrel_core PRIVATE --coverage -fprofile-update=atomic -O0)
  target_compile_options(nevrel_effect PRIVATE --coverage -fprofile-update=atomic -O0)
  target_link_options(nevrel_options INTERFACE --coverage)
endif()
