// The Windows types that the stand-ins are declared with.
#pragma once

#include <cstdint>

using BOOL = int;
using UINT = unsigned int;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using INT_PTR = std::intptr_t;
using LONG_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using ULONG_PTR = std::uintptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using TCHAR = char;  // the system's own encoding
using LPTSTR = TCHAR*;
using LPCTSTR = const TCHAR*;
using LPSTR = char*;
using LPCSTR = const char*;
using HANDLE = void*;
using HMODULE = struct LoadedModule*;
using HINSTANCE = HMODULE;
using HWND = struct Window*;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

#define TEXT(literal) literal

struct RECT {
    LONG left, top, right, bottom;
};
