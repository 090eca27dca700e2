// Smoothing one picture, from file to file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "standalone/instance.h"

namespace nevrel {

struct SmoothJob {
    std::filesystem::path input;
    std::filesystem::path output;
    std::string layer;                    ///< of an EXR; empty for the picture's own channels
    std::optional<PF_PixelFormat> depth;  ///< of the kernels; the picture's own by default
};

/// Several threads may smooth pictures with one instance at once. Throws PictureError; nothing has been
/// written then.
void SmoothPicture(standalone::Instance& instance, const SmoothJob& job);

}  // namespace nevrel
