#include "ui/option_dialog.h"

#include "host/plugin_path.h"
#include "host/suite_handler.h"
#include "resources/dialogs.h"

namespace {

void CenterOver(HWND window, HWND owner) {
    RECT w{};
    RECT o{};
    if (!GetWindowRect(window, &w) || !GetWindowRect(owner, &o)) return;
    const int width = w.right - w.left;
    const int height = w.bottom - w.top;
    MoveWindow(window, (o.left + o.right - width) / 2, (o.top + o.bottom - height) / 2, width,
               height, TRUE);
}

HWND HostWindow(const PF_InData& inData) {
    HWND window = nullptr;
    inData.utils->get_platform_data(inData.effect_ref, PF_PlatData_MAIN_WND, &window);
    return window;
}

}  // namespace

INT_PTR OptionDialog::handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG:
            return onInitDialog(window);
        case WM_COMMAND:
            return onCommand(window, wParam);
        default:
            return 0;
    }
}

INT_PTR OptionDialog::onInitDialog(HWND window) {
    CenterOver(window, parent);
    HWND page = CreatePage(*this, window, SETTINGS_PAGE_ID, settings);
    if (page == nullptr) {
        close(window, 0);
        return 1;
    }
    RECT client{};
    GetClientRect(page, &client);
    MoveWindow(page, 0, 0, client.right, client.bottom, TRUE);
    return 1;
}

INT_PTR OptionDialog::onCommand(HWND window, WPARAM wParam) {
    const WORD control = LOWORD(wParam);
    if (control == OK_BUTTON_ID || control == IDCANCEL) close(window, 0);
    return 1;
}

void DoDialog(PF_InData* inData, PF_ParamDef* params[]) {
    // Made for what it throws: without the basic suite the command fails before it does anything.
    const SuiteHandler suites(inData->pica_basicP);
    HWND parent = HostWindow(*inData);
    HMODULE instance = PluginModule(inData);
    // Without a module of its own to look into, the dialog manager would take the host's dialog of
    // the same id.
    if (instance == nullptr) return;

    OptionDialog dialog(inData, params);
    dialog.instance = instance;
    dialog.templateId = MAKEINTRESOURCEA(OPTION_DIALOG_ID);
    dialog.parent = parent;
    dialog.showModal();
    const SettingDialog& settings = dialog.settings;
    if (settings.editedDefaults != settings.initialDefaults)
        WriteParamDefaults(settings.editedDefaults, inData);
}
