# Compiles for WebAssembly with Debian's emscripten, for browsers that have its vectors.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -msse2 -include ${CMAKE_CURRENT_LIST_DIR}/../fronts/web/bit_cast.h")
