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
/// Nothing where the decoder has to take the file as it is: its header is wrong or tells of fewer
/// samples than there are, or they fill more than one chunk. Throws UnreadablePicture where the
/// file is damaged, of any size, and std::bad_alloc.
[[nodiscard]] std::optional<std::vector<std::byte>> InflatePng(
    std::span<const std::byte> file, const std::vector<PngChunkView>& chunks,
    const std::filesystem::path& path);

}  // namespace nevrel
