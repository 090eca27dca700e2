# nevrel_plugin_file(TARGET EXPORTS): links a module for other programs' processes. On Linux it exports what the version
# script EXPORTS names; elsewhere the sources say it. For Windows its symbols go into a file of their own beside it.
function(nevrel_plugin_file target exports)
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX PREFIX "" OUTPUT_NAME nevrel)
  if(MSVC)
    target_link_options(${target} PRIVATE /DYNAMICBASE /NXCOMPAT /HIGHENTROPYVA)
  elseif(WIN32)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/module/mingw_exception_state.cpp)
    target_link_options(${target} PRIVATE
      -Wl,--dynamicbase,--nxcompat,--high-entropy-va,--no-insert-timestamp,--build-id)
    # Debuggers find the symbols by the build id that both files hold.
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_OBJCOPY} --only-keep-debug --preserve-dates
              $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
      COMMAND ${CMAKE_STRIP} --strip-all --preserve-dates $<TARGET_FILE:${target}> VERBATIM)
  else()
    # Templates of the standard library are visible whatever the compiler was told; the linker hides them.
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
  endif()
endfunction()
