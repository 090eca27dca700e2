// A loaded module that has been set up, ready to be applied.
#pragma once

#include <filesystem>

#include "platform/windows_types.h"
#include "standalone/effect.h"
#include "standalone/module.h"

namespace nevrel {

/// Throws standalone::ModuleError when the module cannot be loaded or its set-up fails.
class Session {
  public:
    /// Dialogs are shown at `mainWindow`; without one there are none.
    explicit Session(const std::filesystem::path& modulePath, HWND mainWindow = nullptr);

    [[nodiscard]] const standalone::Effect& effect() const { return effect_; }

  private:
    standalone::Module module_;
    standalone::Host host_;
    standalone::Effect effect_;
};

/// The module beside the running program.
[[nodiscard]] std::filesystem::path DefaultModulePath();

/// "failed with code N", and the effect's own message if it gave one.
[[nodiscard]] std::string FailureText(const standalone::CommandResult& result);

}  // namespace nevrel
