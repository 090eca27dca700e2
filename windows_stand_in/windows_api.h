// The Windows names that the module uses. On Windows these are the system's own; elsewhere the
// files of this folder stand in for them.
#pragma once

#ifdef _WIN32
#define UNICODE  // names without a suffix take texts in the system's own encoding
#include <windows.h>
// windows.h comes first everywhere.
#include <mbctype.h>
// Names that the standard library's own headers use.
#undef _M1
#undef _M2
#else
#include "windows_stand_in/dialog_manager.h"  // IWYU pragma: export
#include "windows_stand_in/system.h"          // IWYU pragma: export
#endif
