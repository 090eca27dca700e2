// Staircases of 45 degrees that continue a straight piece.
#pragma once

#include <array>

#include "kernel/edge_map.h"
#include "kernel/offset.h"

/// One way in which a straight piece, two pixels long, goes on as a staircase. Cell i of the trace
/// lies at start + i * step; while the ramp lasts, step i blends source + i * step into destination
/// + i * step.
struct StaircaseVariant {
    Offset start;
    Offset step;
    EdgeFlag required;  ///< carried by every cell of the trace
    bool restores;      ///< the source's own output pixel is restored with a second ramp
    Offset destination;
    Offset source;

    /// The flag that ends the trace, in a cell or in the one beside it: the diagonal along the way.
    [[nodiscard]] constexpr EdgeFlag stop() const {
        return step.dx == step.dy ? EdgeDiagonal : EdgeAntiDiagonal;
    }
    [[nodiscard]] constexpr Offset besideCell() const {
        return required == EdgeDown ? Offset{-1, 0} : Offset{0, -1};
    }
};

/// The staircases of a vertical piece: up-right, down-left, up-left, down-right.
inline constexpr std::array<StaircaseVariant, 4> horizontalStaircases{{
    {{1, -1}, {1, -1}, EdgeDown, true, {1, 0}, {1, -1}},
    {{0, 1}, {-1, 1}, EdgeDown, false, {0, 1}, {0, 2}},
    {{0, -1}, {-1, -1}, EdgeDown, true, {0, 0}, {0, -1}},
    {{1, 1}, {1, 1}, EdgeDown, false, {1, 1}, {1, 2}},
}};

/// The staircases of a horizontal piece, in the same order.
inline constexpr std::array<StaircaseVariant, 4> verticalStaircases{{
    {{0, 0}, {1, -1}, EdgeRight, true, {0, 0}, {1, 0}},
    {{-2, 1}, {-1, 1}, EdgeRight, false, {-1, 1}, {-2, 1}},
    {{-2, 0}, {-1, -1}, EdgeRight, true, {-1, 0}, {-2, 0}},
    {{0, 1}, {1, 1}, EdgeRight, false, {0, 1}, {1, 1}},
}};

/// Number of cells of a variant's staircase at (x, y), 0 when there is none.
[[nodiscard]] int StaircaseLength(const StaircaseVariant& variant, const EdgeMap& map, int x,
                                  int y) noexcept;
