// The pixels of PNG files.
#pragma once

#include <filesystem>

#include "command/pictures/picture.h"
#include "command/pictures/png_details.h"

namespace nevrel {

/// Reads the pixels of the PNG that `details` are of: 8-bit or 16-bit samples of grey or RGB, with
/// alpha where it has any. Throws UnreadablePicture and std::bad_alloc.
[[nodiscard]] Part ReadPngPart(const std::filesystem::path& path, const PngDetails& details);

}  // namespace nevrel
