// PNG files with their samples inflated.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "command/pictures/png_details.h"

namespace nevrel {

/// What a decoder needs of a PNG, its samples in blocks that are stored as they are: decoders bring
/// an inflation that takes several times as long as the one used here. Check sums are wrong.
/// Nothing for files whose header is wrong or holds less than there are samples, of which the
/// decoder will tell. Throws UnreadablePicture where they are damaged, and std::bad_alloc.
[[nodiscard]] std::optional<std::vector<std::byte>> InflatePng(
    std::span<const std::byte> file, const std::vector<PngChunkView>& chunks,
    const std::filesystem::path& path);

}  // namespace nevrel
