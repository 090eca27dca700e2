// A user of dialogs: has the main window that owns them, looks at the dialog that opens, and works
// it. On Windows a second thread does so with messages; elsewhere the dialog manager's
// stand-in asks what happens next.
#pragma once

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

class User {
  public:
    /// The main window lies at `place` on the screen.
    explicit User(RECT place = {100, 100, 900, 700});
    ~User();

    [[nodiscard]] HWND mainWindow() const;

    /// Runs `show` and works the dialog that it opens with `actions`, the last of which ends it.
    /// Returns the dialog as it looked at first; nothing when none came up.
    template <typename Show>
    std::optional<SeenDialog> work(std::vector<int> actions, Show show) {
        begin(std::move(actions));
        show();
        return end();
    }

  private:
    struct Seat;
    void begin(std::vector<int> actions);
    std::optional<SeenDialog> end();

    std::unique_ptr<Seat> seat_;
};

}  // namespace test
