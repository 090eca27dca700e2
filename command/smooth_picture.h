// Smoothing pictures, from file to file.
#pragma once

#include <optional>
#include <string>

#include "command/mask.h"
#include "command/pictures/color_channels.h"
#include "command/pictures/picture.h"
#include "command/progress.h"
#include "command/sequences/picture_list.h"
#include "command/views/look.h"
#include "host_kit/instance.h"

namespace nevrel {

/// What becomes of outputs that are there before.
enum class Existing { Overwrite, Skip, Refuse };

/// How pictures are smoothed, beside the instance's controls.
struct SmoothSettings {
    std::string layer;                    ///< of an EXR; empty for the picture's own channels
    std::optional<PF_PixelFormat> depth;  ///< of the kernels; the picture's own by default
    bool allParts = false;                ///< not just the first part or page with colour
    std::string streamFormat;             ///< of the standard output; empty for the input's own
    Look look;                            ///< for one picture
    WriteSettings write;
};

/// How the pictures of a run are gone through.
struct RunSettings {
    unsigned jobs = 1;
    Existing existing = Existing::Overwrite;
    bool failFast = false;  ///< the first failure stops the run
    ProgressSettings progress;
};

/// Whether nothing has to be done for an output when those that are there are left. An empty file
/// is a placeholder of another program, or what a crash of the system left.
[[nodiscard]] bool IsPictureThere(const std::filesystem::path& output);

/// Smooths the channels of one part of a picture, as `format` stores it. `paths` names the files
/// in errors.
void SmoothPart(host_kit::Instance& instance, const SmoothSettings& settings,
                const PicturePaths& paths, const Mask& mask, const std::string& format,
                Picture& picture, ColorChannels& channels, StageTimes& times);

/// Several threads may smooth pictures with one instance at once. Without an output the picture is
/// only looked at. Throws a std::exception, as a rule a PictureError; the output has not been
/// written then.
void SmoothPicture(host_kit::Instance& instance, const SmoothSettings& settings,
                   const PicturePaths& paths, Remarks& remarks);

/// Smooths the pictures, several at a time, each in one thread that reads, renders and writes it.
/// What there is to tell goes to `complain`, in the order of the pictures. Returns the exit status
/// as Progress gives it.
int SmoothPictures(host_kit::Instance& instance, const SmoothSettings& settings,
                   const RunSettings& run, const PictureList& pictures, const Complain& complain);

}  // namespace nevrel
