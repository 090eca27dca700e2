// Which channels of a picture the effect works on.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "command/pictures/picture.h"
#include "sdk/effect_api.h"

namespace nevrel {

/// Indices of the channels in one part of a picture. A grey picture has one index three times. All
/// other channels of the picture are carried over as they are.
struct ColorChannels {
    std::size_t part = 0;
    int red = -1, green = -1, blue = -1;
    int alpha = -1;      ///< negative: opaque everywhere
    std::string prefix;  ///< of the layer's channel names, e.g. "diffuse."

    [[nodiscard]] bool isGrey() const { return red == green; }
};

/// Finds the colour channels: those of the layer named, or the picture's own, or those of its only
/// layer. Throws PictureError when there are none or several to choose from.
[[nodiscard]] ColorChannels FindColorChannels(const Picture& picture, const std::string& layer,
                                              const std::filesystem::path& path);

/// The same for each part that has colour channels; layers' names do not choose among parts. Throws
/// PictureError when there are several to choose from within a part.
[[nodiscard]] std::vector<ColorChannels> FindEveryPartsChannels(const Picture& picture,
                                                                const std::filesystem::path& path);

/// The depth of the kernels that a picture's samples ask for. Throws PictureError for sample types
/// without one.
[[nodiscard]] PF_PixelFormat OwnDepth(const Part& part, const ColorChannels& channels,
                                      const std::filesystem::path& path);

}  // namespace nevrel
