#include "ui/setting_dialog.h"

#include <array>

#include "params/string_table.h"
#include "render/param_values.h"
#include "resources/dialogs.h"

namespace {

struct Caption {
    int controlId;
    TextId text;
};

constexpr std::array<Caption, 4> captions = {{
    {SETTINGS_BOX_ID, TextId::Settings},
    {GROUP_CHECKBOX_ID, TextId::GroupParameters},
    {STORE_BUTTON_ID, TextId::StoreDefaults},
    {RESTORE_BUTTON_ID, TextId::RestoreDefaults},
}};

ParamDefaults StoredDefaults(const PF_InData* inData) {
    ParamDefaults defaults = builtInDefaults;
    ReadParamDefaults(defaults, inData);
    return defaults;
}

EffectValues ValuesOf(PF_ParamDef* const params[]) {
    EffectValues values{};
    FillJobFromParams(values, params);
    return values;
}

}  // namespace

SettingDialog::SettingDialog(PF_InData* commandData, PF_ParamDef* commandParams[])
    : inData(commandData),
      params(commandParams),
      initialDefaults(StoredDefaults(commandData)),
      editedDefaults(initialDefaults),
      currentValues(ValuesOf(commandParams)),
      hostIgnoresDefaults(::hostIgnoresDefaults(commandData)) {}

INT_PTR SettingDialog::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG:
            return onInitDialog(window);
        case WM_COMMAND:
            return onCommand(LOWORD(wParam));
        case WM_DESTROY:
            return onDestroy(window);
        default:
            return 0;
    }
}

INT_PTR SettingDialog::onInitDialog(HWND window) const {
    for (const Caption& caption : captions) {
        SetDlgItemTextA(window, caption.controlId, LookupString(caption.text));
    }
    if (hostIgnoresDefaults) {
        EnableWindow(GetDlgItem(window, STORE_BUTTON_ID), FALSE);
        EnableWindow(GetDlgItem(window, RESTORE_BUTTON_ID), FALSE);
    }
    if (editedDefaults.colorKeyGroup != 0) {
        SendMessageA(GetDlgItem(window, GROUP_CHECKBOX_ID), BM_SETCHECK, BST_CHECKED, 0);
    }
    return 1;
}

INT_PTR SettingDialog::onCommand(WORD control) {
    EffectValues& edited = editedDefaults;
    if (control == STORE_BUTTON_ID) edited = currentValues;
    if (control == RESTORE_BUTTON_ID) edited = static_cast<const EffectValues&>(builtInDefaults);
    return 1;
}

INT_PTR SettingDialog::onDestroy(HWND window) {
    HWND checkbox = GetDlgItem(window, GROUP_CHECKBOX_ID);
    if (checkbox == nullptr) return 1;
    const bool checked =
        SendMessageA(checkbox, BM_GETCHECK, 0, 0) == static_cast<LRESULT>(BST_CHECKED);
    editedDefaults.colorKeyGroup = checked ? 1 : 0;
    return 1;
}
