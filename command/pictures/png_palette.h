// Pictures of few colours as indices to a palette.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "command/pictures/picture.h"
#include "command/pictures/png_details.h"

namespace nevrel {

struct IndexedPixels {
    std::vector<PngColor> palette;
    std::vector<std::byte> rows;  ///< indices, each row filled up to a whole byte
    unsigned bits = 8;            ///< of an index: 1, 2, 4 or 8
    bool keepsIndices = true;     ///< the palette starts with all of the one that it was made from
};

/// An 8-bit RGB or RGBA part with the colours of `palette` and new ones behind them, or with its
/// own colours alone where those are too many; nothing when it has more than 256.
[[nodiscard]] std::optional<IndexedPixels> IndexPixels(const Part& part,
                                                       const std::vector<PngColor>& palette);

}  // namespace nevrel
