// Dialogs of an effect in a terminal.
#pragma once

#include <iosfwd>

#include "windows_stand_in/dialog_shower.h"

namespace nevrel {

/// Prints a dialog with its controls numbered and reads the user's choices, one a line. The end of
/// the input closes the dialog. Works with a pipe as well.
class TerminalDialog : public DialogShower {
  public:
    TerminalDialog(std::istream& input, std::ostream& output) : input_(input), output_(output) {}

    UserAction nextAction(const Window& dialog) override;

    /// Whether a dialog has come up.
    [[nodiscard]] bool hasShown() const { return hasShown_; }

  private:
    std::istream& input_;
    std::ostream& output_;
    bool hasShown_ = false;
};

}  // namespace nevrel
