// Files read and written by the picture library.
#pragma once

#include <filesystem>
#include <string>

#include "command/files/memory_file.h"
#include "command/pictures/picture.h"

namespace nevrel {

/// As PictureLibrary's functions.
[[nodiscard]] std::string FormatByLibrary(const std::filesystem::path& path);
[[nodiscard]] Picture ReadWithLibrary(const std::filesystem::path& path);
void EncodeWithLibrary(const Picture& picture, const std::filesystem::path& path,
                       const WriteSettings& settings, MemoryFile& encoded);
void RequireWholeByLibrary(const std::string& encoded, const Picture& picture,
                           const std::filesystem::path& path);

}  // namespace nevrel
