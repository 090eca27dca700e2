// Dialog templates, as the dialog manager's stand-in finds them where Windows would look into a
// module's resources.
#pragma once

#include <span>

#include "windows_stand_in/windows_types.h"

/// A control, in dialog units relative to its dialog.
struct ControlTemplate {
    WORD id;
    const char* text;
    DWORD style;
    LONG x, y, width, height;
};

/// A dialog at the origin, in dialog units.
struct DialogTemplate {
    WORD id;
    const char* caption;
    DWORD style;
    LONG width, height;
    std::span<const ControlTemplate> controls;
};

/// All templates of this module. Defined with the module's resources.
std::span<const DialogTemplate> ModuleDialogTemplates();
