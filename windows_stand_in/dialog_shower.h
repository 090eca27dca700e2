// The user's side of the dialog manager's stand-in: what windows are, and how someone is shown them
// and acts.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "windows_stand_in/dialog_manager.h"

enum class UserActionKind { Click, Escape, CloseBox };

/// What the user does to a dialog.
struct UserAction {
    UserActionKind kind;
    int controlId = 0;  ///< what is clicked; a control that is missing or disabled takes no click
};

/// Shows dialogs to a user. Belongs to a main window.
class DialogShower {
  public:
    virtual ~DialogShower() = default;

    /// Asked again and again until the dialog has ended: shows it as it looks now, returns what the
    /// user does next.
    virtual UserAction nextAction(const Window& dialog) = 0;
};

/// A window as plain data: a host's main window, a dialog, a page of it, or a control.
struct Window {
    RECT rect{};                     ///< relative to the parent for a child, else to the screen
    DialogShower* shower = nullptr;  ///< of a main window: shows the dialogs that it owns
    Window* parent = nullptr;        ///< or owner
    DWORD style = 0;
    int id = 0;
    std::string text{};  ///< as it was set, in the code page of whoever set it
    bool enabled = true;
    bool checked = false;
    DLGPROC procedure = nullptr;  ///< of a dialog
    LONG_PTR userData = 0;
    bool ended = false;
    INT_PTR endCode = 0;
    std::vector<std::unique_ptr<Window>> children{};  ///< in the order of creation
};
