// Pictures as PNG files.
#pragma once

#include <filesystem>

#include "command/files/memory_file.h"
#include "command/pictures/picture.h"

namespace nevrel {

/// Encodes the only part of the picture, of integer or float samples with straight alpha. Chunks
/// and palette of a picture that was a PNG are kept where they still fit, which `remarks` tells
/// where they do not; of others profile, resolution, date and texts become chunks. Throws
/// PictureError, naming `path`.
void EncodePng(const Picture& picture, const std::filesystem::path& path,
               const WriteSettings& settings, MemoryFile& file, Remarks& remarks);

}  // namespace nevrel
