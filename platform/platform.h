// The Windows names that the module uses. On Windows these are the system's own; elsewhere the files of this folder
// stand in for them.
#pragma once

#ifdef _WIN32
#include <windows.h>
// mbctype.h needs no order of its own, but windows.h comes first everywhere.
#include <mbctype.h>
#else
#include "platform/dialog_manager.h"  // IWYU pragma: export
#include "platform/system.h"          // IWYU pragma: export
#endif
