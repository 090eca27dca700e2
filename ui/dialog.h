// Objects over the windows of the dialog manager: each dialog or page is an object that gets its
// window's messages. They live on the stack of whoever shows them.
#pragma once

#include <cstdint>

#include "windows_stand_in/windows_api.h"

/// What handles the messages of a window.
class Dialog {
  public:
    /// Returns the dialog procedure's result: non-zero when the message was handled.
    virtual INT_PTR handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

  protected:
    ~Dialog() = default;
};

/// The procedure of every dialog and page: binds the window to the Dialog given at its creation,
/// which then gets all messages. Returns 0 for messages that come before.
INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// A page: a child dialog with a template of its own. Outlives its window.
class DialogComponent : public Dialog {
  protected:
    ~DialogComponent() = default;
};

/// A modal dialog. Fill `instance`, `templateId` and `parent`, then show it.
class DialogWindow : public Dialog {
  public:
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    HINSTANCE instance = nullptr;  ///< the module that holds the template
    LPCSTR templateId = nullptr;   ///< an integer id in the form of a resource name
    HWND parent = nullptr;         ///< the owner
    std::int32_t modeless = 0;     ///< always 0
    HANDLE closedEvent;            ///< signalled while the dialog is not showing
    std::int64_t result = -1;      ///< the code given to close(), -1 before

    /// Ends the dialog with `code`. Returns 0, changing nothing, when that fails.
    virtual BOOL close(HWND window, INT_PTR code);

    /// Returns when the dialog has ended, or at once when it is showing already or cannot be shown.
    void showModal();

  protected:
    DialogWindow();
    ~DialogWindow();
};

/// Creates the window of `page` from the owner's module, as a child of the owner's `window`. Null
/// when it cannot.
HWND CreatePage(const DialogWindow& owner, HWND window, WORD templateId, DialogComponent& page);
