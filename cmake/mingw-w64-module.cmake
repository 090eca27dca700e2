# The module's own compiler: its runtime library takes locks and thread-local storage from Windows itself. The one with
# POSIX threads, which tests need for std::thread, would leave an exception handler and, at each load, a thread-local
# index in the host's process.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-win32)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-win32)
