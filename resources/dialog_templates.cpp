// The dialog templates, for the dialog manager's stand-in; on Windows they are in nevrel.rc.
#include <array>

#include "resources/dialogs.h"
#include "windows_stand_in/dialog_template.h"
#include "windows_stand_in/windows_api.h"

namespace {

#define DIALOG_CONTROL(text, id, style, x, y, width, height) \
    ControlTemplate{id, text, style, x, y, width, height},

constexpr ControlTemplate optionDialogControls[] = {OPTION_DIALOG_CONTROLS};
constexpr ControlTemplate settingsPageControls[] = {SETTINGS_PAGE_CONTROLS};

constexpr std::array<DialogTemplate, 2> dialogTemplates = {{
    {OPTION_DIALOG_ID, OPTION_DIALOG_CAPTION, OPTION_DIALOG_STYLE, OPTION_DIALOG_WIDTH,
     OPTION_DIALOG_HEIGHT, optionDialogControls},
    {SETTINGS_PAGE_ID, "", SETTINGS_PAGE_STYLE, SETTINGS_PAGE_WIDTH, SETTINGS_PAGE_HEIGHT,
     settingsPageControls},
}};

}  // namespace

std::span<const DialogTemplate> ModuleDialogTemplates() { return dialogTemplates; }
