#include "ui/dialog.h"

namespace {

LPARAM CreationArgument(Dialog* dialog) { return reinterpret_cast<LPARAM>(dialog); }

}  // namespace

INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window == nullptr) return 0;
    if (message == WM_INITDIALOG) SetWindowLongPtrA(window, GWLP_USERDATA, lParam);
    const LONG_PTR bound = GetWindowLongPtrA(window, GWLP_USERDATA);
    auto* dialog = reinterpret_cast<Dialog*>(bound);
    if (dialog == nullptr) return 0;
    try {
        return dialog->handleMessage(window, message, wParam, lParam);
    } catch (...) {  // which the dialog manager could not let pass
        SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        EndDialog(window, 0);
        return 0;
    }
}

DialogWindow::DialogWindow() : closedEvent(CreateEventA(nullptr, TRUE, TRUE, nullptr)) {}

DialogWindow::~DialogWindow() {
    ResetEvent(closedEvent);
    CloseHandle(closedEvent);
}

BOOL DialogWindow::close(HWND window, INT_PTR code) {
    const BOOL ended = EndDialog(window, code);
    if (!ended) return ended;
    result = code;
    return SetEvent(closedEvent);
}

void DialogWindow::showModal() {
    if (WaitForSingleObject(closedEvent, 0) == WAIT_TIMEOUT) return;
    ResetEvent(closedEvent);
    modeless = 0;
    DialogBoxParamA(instance, templateId, parent, DialogProc, CreationArgument(this));
}

HWND CreatePage(const DialogWindow& owner, HWND window, WORD templateId, DialogComponent& page) {
    return CreateDialogParamA(owner.instance, MAKEINTRESOURCEA(templateId), window, DialogProc,
                              CreationArgument(&page));
}
