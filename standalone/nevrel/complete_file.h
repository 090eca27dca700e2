// Finding out that a file ends too early where the reading library would not tell.
#pragma once

#include <filesystem>
#include <string>

namespace nevrel {

/// False when the file is shorter than its own structure says. Knows PNG (the chunks up to the end mark) and
/// DPX (the size of the stored image); true for the other formats, whose readers report a missing byte
/// themselves.
[[nodiscard]] bool IsComplete(const std::filesystem::path& path, const std::string& format);

}  // namespace nevrel
