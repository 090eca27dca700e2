// Staircases of 45 degrees that continue a straight boundary of two pieces.
#pragma once

#include <array>

#include "kernel/edges/edge_map.h"
#include "kernel/pixels/image_view.h"

/// One way in which a straight boundary goes on as a staircase. Cell i of the trace lies at start +
/// i * step; while the ramp lasts, step i blends source + i * step into destination + i * step.
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

/// The staircases of a vertical piece: up-right, down-left, up-left, down-right. The first two
/// cells of the first and of the last one, from the straight boundary of pixel o:
///
///     .   .   .   .          o | .   .   .
///             -
///     .   .   .   .          . | .   .   .
///         -                      -
///     o | .   .   .          .   .   .   .
///                                    -
///     . | .   .   .          .   .   .   .
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

/// Whether the trace of a variant's staircase goes through a cell. Flags answers test(dx, dy,
/// flag), with a Truth for one pixel or a mask for many.
template <typename Flags>
[[nodiscard]] auto StaircaseCell(const Flags& flags, const StaircaseVariant& variant, Offset cell) {
    const Offset beside = cell + variant.besideCell();
    return flags.test(cell.dx, cell.dy, variant.required) &
           ~flags.test(cell.dx, cell.dy, variant.stop()) &
           ~flags.test(beside.dx, beside.dy, variant.stop());
}

/// The first cells that a staircase needs to count at all.
inline constexpr int shortestStaircase = 2;

/// Number of cells of a variant's staircase at (x, y), which has the first ones.
[[nodiscard]] inline int StaircaseLength(const StaircaseVariant& variant, const EdgeMap& map, int x,
                                         int y) noexcept {
    const auto cell = [&](int i) {
        return Offset{x + variant.start.dx + i * variant.step.dx,
                      y + variant.start.dy + i * variant.step.dy};
    };
    const auto goesThrough = [&](Offset at) {
        // No cell of the border counts, and the map has no row above it to look at.
        return at.dy >= 0 && StaircaseCell(FlagsAround(map, at.dx, at.dy), variant, {0, 0});
    };
    int length = shortestStaircase;
    while (goesThrough(cell(length))) ++length;
    return length;
}
