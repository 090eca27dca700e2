// Smoothing pictures, from file to file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "command/in_parallel.h"
#include "command/output_paths.h"
#include "command/pictures/remarks.h"
#include "host_kit/instance.h"

namespace nevrel {

/// How pictures are smoothed, beside the instance's controls.
struct SmoothSettings {
    std::string layer;                    ///< of an EXR; empty for the picture's own channels
    std::optional<PF_PixelFormat> depth;  ///< of the kernels; the picture's own by default
    bool allParts = false;                ///< not just the first part or page with colour
    bool verbose = false;                 ///< tells details of what became of pictures
};

/// Several threads may smooth pictures with one instance at once. Throws a std::exception,
/// as a rule a PictureError; nothing has been written then.
void SmoothPicture(host_kit::Instance& instance, const SmoothSettings& settings,
                   const PicturePaths& paths, Remarks& remarks);

/// Smooths the pictures, up to `jobs` at a time, each in one thread that reads, renders and writes
/// it. Failures and remarks are passed to `complain`, in the order of the pictures; none stops
/// another. Returns whether none failed.
bool SmoothPictures(host_kit::Instance& instance, const SmoothSettings& settings,
                    const std::vector<PicturePaths>& pictures, unsigned jobs,
                    const Complain& complain);

}  // namespace nevrel
