// The options dialog: edits the stored defaults of new instances.
#pragma once

#include "sdk/effect_api.h"
#include "ui/setting_dialog.h"

/// The dialog around the settings page.
class OptionDialog : public DialogWindow {
  public:
    OptionDialog(PF_InData* inData, PF_ParamDef* params[]) : settings(inData, params) {}

    INT_PTR handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual INT_PTR onInitDialog(HWND window);
    virtual INT_PTR onCommand(HWND window, WPARAM wParam);

    SettingDialog settings;
};

/// Shows the options dialog and, when the defaults were changed in it, writes their file. Throws a
/// PF_Err when the host gives no basic suite.
void DoDialog(PF_InData* inData, PF_ParamDef* params[]);
