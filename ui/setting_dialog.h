// The settings page of the options dialog.
#pragma once

#include "params/defaults_file.h"
#include "sdk/effect_api.h"
#include "ui/dialog.h"

/// Two buttons and a checkbox that edit a copy of the stored defaults.
class SettingDialog : public DialogComponent {
  public:
    /// Reads the stored defaults and the instance's current values.
    SettingDialog(PF_InData* commandData, PF_ParamDef* commandParams[]);

    INT_PTR handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

    PF_InData* inData;
    PF_ParamDef** params;
    ParamDefaults initialDefaults;  ///< as read at opening
    ParamDefaults editedDefaults;
    EffectValues currentValues;  ///< of the instance
    bool hostIgnoresDefaults;    ///< only the grouping can be set then

  private:
    INT_PTR onInitDialog(HWND window) const;
    INT_PTR onCommand(WORD control);
    INT_PTR onDestroy(HWND window);
};
