// Loading an effect module and finding its entry point.
#pragma once

#include <filesystem>
#include <stdexcept>

#include "sdk/effect_api.h"

namespace host_kit {

/// Why a module could not be loaded; the text is one line and starts with the module's path.
class ModuleError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A loaded effect module; it stays loaded as long as the object lives. Can be moved, not copied.
class Module {
  public:
    /// Throws ModuleError when the file is missing, is no module for this platform, or lacks the
    /// entry point.
    explicit Module(const std::filesystem::path& path);
    ~Module();
    Module(Module&& other) noexcept;
    Module& operator=(Module&& other) noexcept;

    [[nodiscard]] PF_EntryPoint entryPoint() const { return entryPoint_; }
    /// Absolute path of the module's file.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
    void* library_ = nullptr;
    PF_EntryPoint entryPoint_ = nullptr;
};

}  // namespace host_kit
