// What a format can hold of a picture.
#pragma once

#include <filesystem>

#include "command/pictures/picture.h"

namespace nevrel {

struct FormatLimits {
    bool holdsParts = false, holdsDataWindow = false;
};

/// Throws PictureError, naming `path`, where the picture's format cannot hold it.
void RequireHolds(const FormatLimits& limits, const Picture& picture,
                  const std::filesystem::path& path);

/// Throws the PictureError for channels that the picture's format cannot hold.
[[noreturn]] void RefuseChannels(const std::filesystem::path& path, const Picture& picture,
                                 const Part& part);

}  // namespace nevrel
