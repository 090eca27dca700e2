// Frames without files, for pipes between programs.
#pragma once

#include <string>

#include "command/smooth_picture.h"

namespace nevrel {

/// The form of raw frames: rows without gaps from the top, straight RGBA in the order of the name.
struct RawFormat {
    int width, height;
    SampleType samples;
};

/// Reads "1920x1080:rgba", and the same with "rgba64le" or "rgbaf32le". Throws UsageError.
[[nodiscard]] RawFormat ParseRawFormat(const std::string& text);

/// Smooths frame after frame from the standard input to the standard output, until the former
/// ends. The mask's path may be empty. Throws PictureError, naming the frame, where the input ends
/// within one or the output cannot be written.
void SmoothRawFrames(host_kit::Instance& instance, const SmoothSettings& settings,
                     const RawFormat& format, const std::filesystem::path& maskPath);

}  // namespace nevrel
