// What the effect finds in a picture: edges, and the runs that it measures along them.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "command/views/canvas.h"
#include "host_kit/instance.h"
#include "host_kit/world.h"

namespace nevrel {

/// A byte for each pixel, row by row.
struct EdgeMarks {
    static constexpr unsigned right = 1;     ///< an edge between the pixel and the one on its right
    static constexpr unsigned below = 2;     ///< or the one below
    static constexpr int lengthShift = 2;    ///< from here on, length of the longest run that
    static constexpr unsigned longest = 63;  ///< covers the pixel, cut at this; 0 for none

    int width, height;
    std::vector<std::uint8_t> bytes;
};

/// Finds the marks that the instance's controls give the pixels. A run covers the pixels that a
/// ramp along it would blend into.
[[nodiscard]] EdgeMarks FindEdgeMarks(const host_kit::World& pixels,
                                      const host_kit::Instance& instance);

/// Colours of runs by their length, from orange for 1 over green to blue for 32 and more; that of
/// length 0 is the edges' own.
[[nodiscard]] std::array<Color, EdgeMarks::longest + 1> MarkColors();

/// The picture, pale and enlarged, with lines where edges lie and colour where runs do.
[[nodiscard]] Canvas DrawEdges(const Canvas& picture, const EdgeMarks& marks);

}  // namespace nevrel
