// The encoder of PNG files.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "command/files/memory_file.h"
#include "command/pictures/picture.h"
#include "command/pictures/png_details.h"
#include "command/pictures/png_filter.h"

namespace nevrel {

/// How hard the encoder tries: more of both makes smaller files, slower.
struct PngEffort {
    int level = 4;  ///< of compression, 0 to 9
    bool takesDifferences = false;
};

/// The rows as a PNG holds them. Throws std::bad_alloc.
[[nodiscard]] std::vector<std::byte> CompressRows(const PngRows& rows, const PngEffort& effort);

/// Chunks for what a picture that was no PNG tells. Throws std::bad_alloc.
[[nodiscard]] std::vector<PngChunk> MetadataChunks(const Metadata& metadata);

/// Everything of a PNG but its other chunks.
struct PngPixels {
    int width, height;
    PngColorType type;
    unsigned bits;
    std::span<const PngColor> palette;  ///< none but of indices
    std::span<const std::byte> compressed;
};

/// Throws std::system_error.
void WritePng(const PngPixels& pixels, const std::vector<PngChunk>& chunks, MemoryFile& file);

}  // namespace nevrel
