// Controls in a file, under the keys that the effect's own defaults file has.
#pragma once

#include <filesystem>
#include <string>

#include "host_kit/instance.h"

namespace nevrel {

/// Sets the controls that the file's section [defaults] names; the others stay. Throws UsageError,
/// naming file and line, for what is no control or not in its range, and where there is no such
/// section.
void ReadSettingsFile(const std::filesystem::path& path, host_kit::Instance& instance);

/// All controls, as such a file holds them.
[[nodiscard]] std::string SettingsText(const host_kit::Instance& instance);

/// Writes all controls, so that the file can serve as the module's defaults file. Throws
/// PictureError.
void WriteSettingsFile(const std::filesystem::path& path, const host_kit::Instance& instance);

}  // namespace nevrel
