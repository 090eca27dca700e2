// A loaded module that has been set up, ready to be applied.
#pragma once

#include <filesystem>

#include "host_kit/effect.h"
#include "host_kit/module.h"
#include "windows_stand_in/windows_types.h"

namespace nevrel {

/// Throws host_kit::ModuleError when the module cannot be loaded or its set-up fails.
class Session {
  public:
    /// Dialogs are shown at `mainWindow`; without one there are none.
    explicit Session(const std::filesystem::path& modulePath, HWND mainWindow = nullptr);

    [[nodiscard]] const host_kit::Effect& effect() const { return effect_; }

  private:
    host_kit::Module module_;
    host_kit::Host host_;
    host_kit::Effect effect_;
};

/// "failed with code N", and the effect's own message if it gave one.
[[nodiscard]] std::string FailureText(const host_kit::CommandResult& result);

}  // namespace nevrel
