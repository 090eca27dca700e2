# Only SSE2 of the vector forms.
set(x64 ${PROJECT_SOURCE_DIR}/kernel/x64)
target_compile_definitions(nevrel_core PRIVATE NEVREL_X64)
target_sources(nevrel_core PRIVATE
  ${x64}/blend_across.cpp ${x64}/forms_sse2.cpp ${CMAKE_CURRENT_LIST_DIR}/sse2_only.cpp)

# Whole by itself: what it asks of its surroundings is a word when its memory has grown.
add_executable(nevrel_wasm front.cpp ${PROJECT_SOURCE_DIR}/params/string_table.cpp
  $<TARGET_OBJECTS:nevrel_capi> $<TARGET_OBJECTS:nevrel_core>)
target_link_libraries(nevrel_wasm PRIVATE nevrel_options)
target_include_directories(nevrel_wasm PRIVATE ${CMAKE_BINARY_DIR})  # the version
target_include_directories(nevrel_wasm SYSTEM PRIVATE ${PROJECT_SOURCE_DIR}/include)
set(exports _malloc _free _nevrel_control_at _nevrel_control_count _nevrel_settings_init _nevrel_smooth
  _nevrel_status_text _nevrel_version)
list(JOIN exports "," exports)
target_link_options(nevrel_wasm PRIVATE
  --no-entry -sSTANDALONE_WASM -sALLOW_MEMORY_GROWTH -sEXPORTED_FUNCTIONS=${exports})
set_target_properties(nevrel_wasm PROPERTIES OUTPUT_NAME nevrel SUFFIX .wasm)

set(parts page.html page.css texts.js panel.js view.js gestures.js page.js core.js png.js pictures.js worker.js)
list(TRANSFORM parts PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
set(sample ${PROJECT_SOURCE_DIR}/samples/cel.png)
find_program(NODE node REQUIRED)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/page/index.html
  COMMAND ${NODE} ${CMAKE_CURRENT_LIST_DIR}/assemble.mjs $<TARGET_FILE:nevrel_wasm> ${sample}
    ${CMAKE_BINARY_DIR}/page/index.html
  DEPENDS nevrel_wasm assemble.mjs ${parts} ${sample}
  VERBATIM)
add_custom_target(nevrel_page DEPENDS ${CMAKE_BINARY_DIR}/page/index.html)
