// A user of dialogs: has the main window that owns them, looks at the dialog that opens, and works
// it: on Windows with messages, elsewhere as the dialog manager's stand-in asks.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "windows_stand_in/windows_api.h"

namespace test {

/// What a user does: clicks the control with this id, or one of these.
inline constexpr int escape = -1;
inline constexpr int closeBox = -2;

struct SeenControl {
    std::string text;
    bool enabled;
    bool checked;
};

/// A dialog as it looks once open. Places are on the screen.
struct SeenDialog {
    std::string caption;
    RECT place{};
    RECT client{};
    RECT page{};
    std::map<int, SeenControl> controls;
};

inline constexpr RECT mainWindowPlace{100, 100, 900, 700};

class User {
  public:
    User();
    ~User();

    [[nodiscard]] HWND mainWindow() const;

    /// Runs `show` and works the dialog that it opens with `actions`, the last of which ends it.
    /// Returns the dialog as it looked at first; nothing when none came up.
    std::optional<SeenDialog> work(const std::vector<int>& actions,
                                   const std::function<void()>& show);

  private:
    struct Seat;
    std::unique_ptr<Seat> seat_;
};

}  // namespace test
