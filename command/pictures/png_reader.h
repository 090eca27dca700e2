// The pixels of PNG files.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <vector>

#include "command/pictures/picture.h"
#include "command/pictures/png_details.h"

namespace nevrel {

/// Reads the pixels of a PNG: 8-bit or 16-bit samples of grey or RGB, with alpha where it has any.
/// Throws UnreadablePicture and std::bad_alloc.
[[nodiscard]] Part ReadPngPart(std::span<const std::byte> file,
                               const std::vector<PngChunkView>& chunks, const PngDetails& details,
                               const std::filesystem::path& path);

}  // namespace nevrel
