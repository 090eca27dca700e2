# Options that every target shares. Results are bit-exact in every build, so nothing here may let a compiler
# contract or reorder floating-point arithmetic.
add_library(nevrel_options INTERFACE)
target_include_directories(nevrel_options INTERFACE ${PROJECT_SOURCE_DIR})

if(MSVC)
  set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")  # the module brings its own
  target_compile_options(nevrel_options INTERFACE /W4 /WX /fp:precise /utf-8 /permissive-)
  target_compile_definitions(nevrel_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(nevrel_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
                                                  -ffp-contract=off)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes a text that begins with a literal for one that overlaps itself.
    target_compile_options(nevrel_options INTERFACE -Wno-restrict)
  endif()
  if(WIN32)
    target_compile_definitions(nevrel_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN)
    # Windows aligns the stack to 16 bytes only, and this compiler keeps wider vectors there with aligned moves.
    target_compile_options(nevrel_options INTERFACE -Wa,-muse-unaligned-vector-move)
    target_link_options(nevrel_options INTERFACE -static)
  endif()
endif()

# NEVREL_SANITIZERS: a list for -fsanitize, e.g. "address,undefined".
if(NEVREL_SANITIZERS)
  target_compile_options(nevrel_options INTERFACE -fsanitize=${NEVREL_SANITIZERS} -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
  target_link_options(nevrel_options INTERFACE -fsanitize=${NEVREL_SANITIZERS})
endif()
