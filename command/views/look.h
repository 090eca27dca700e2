// Pictures of what the effect did to a picture.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "command/render_part.h"
#include "command/sequences/picture_list.h"

namespace nevrel {

/// What the user wants to see of one picture.
struct Look {
    std::filesystem::path comparison;  ///< where before and after go; may be empty
    std::filesystem::path edges;       ///< where edges and runs go; may be empty
    std::optional<std::string> spot;   ///< "X,Y" of what is enlarged; the busiest by default

    [[nodiscard]] bool isWanted() const { return !comparison.empty() || !edges.empty(); }

    /// Draws and writes the views that are wanted. Throws PictureError.
    void draw(const host_kit::Instance& instance, const RenderedPart& rendered, const Part& part,
              const PicturePaths& paths) const;
};

/// Throws UsageError where the views are for more than one picture, would overwrite it or each
/// other, or the words do not fit.
void RequireUsable(const Look& look, const PictureList& pictures);

}  // namespace nevrel
