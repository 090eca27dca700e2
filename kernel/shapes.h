// Shapes that the smoothing pass recognises in the edge map around a pixel.
#pragma once

#include <array>
#include <optional>

#include "kernel/neighbourhood.h"

/// One way in which a straight piece, two pixels long, goes on as a 45-degree staircase. Cell i of the trace
/// lies at start + i * step; while the ramp lasts, step i blends source + i * step into destination + i *
/// step.
struct StaircaseVariant {
    Offset start;
    Offset step;
    EdgeFlag required;  ///< carried by every cell of the trace
    bool restores;      ///< the source's own output pixel is restored with a second ramp
    Offset destination;
    Offset source;
};

/// From this many cells on a staircase counts as one.
inline constexpr int shortestStaircase = 2;

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
[[nodiscard]] int StaircaseLength(const StaircaseVariant& variant, const EdgeMap& map, int x, int y) noexcept;

/// Whether the pixel is the tip of a line or an isolated pixel, to be averaged with its neighbours.
[[nodiscard]] bool TipShape(const Neighbourhood& at) noexcept;

/// The pixel to restore at a notch of the vertical piece R(x, y).
[[nodiscard]] std::optional<Offset> VerticalPieceNotch(const Neighbourhood& at) noexcept;

/// The pixel to restore at a notch of the horizontal piece D(x, y).
[[nodiscard]] std::optional<Offset> HorizontalPieceNotch(const Neighbourhood& at) noexcept;

/// The pixel to restore at a notch of the corner formed by D(x, y) and R(x, y).
[[nodiscard]] std::optional<Offset> CornerNotch(const Neighbourhood& at) noexcept;

/// The pixel to restore beside a line tip.
[[nodiscard]] std::optional<Offset> TipNotch(const Neighbourhood& at) noexcept;
