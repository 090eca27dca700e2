// One part of a picture through the effect.
#pragma once

#include <filesystem>
#include <optional>

#include "command/mask.h"
#include "command/pictures/color_channels.h"
#include "command/pictures/picture.h"
#include "host_kit/instance.h"
#include "host_kit/world.h"

namespace nevrel {

/// A part's pixels as the effect is given them, and as it and the mask leave them.
class RenderedPart {
  public:
    /// Renders at `depth`, or at that of the part's samples. `path` is the picture's, for
    /// errors. Throws PictureError.
    RenderedPart(host_kit::Instance& instance, const Part& part, const ColorChannels& channels,
                 std::optional<PF_PixelFormat> depth, const std::filesystem::path& path,
                 const Mask& mask, StageTimes& times);

    [[nodiscard]] const host_kit::World& before() const { return before_; }
    [[nodiscard]] const host_kit::World& after() const { return after_; }

  private:
    host_kit::World before_, after_;
};

}  // namespace nevrel
