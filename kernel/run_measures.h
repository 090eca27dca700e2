// Measures of the boundary runs that meet a piece of a staircase. All of them read only the edge
// map.
//
// A piece is one pixel's length of boundary: R(x, y) between (x, y) and (x + 1, y), or D(x, y)
// between (x, y) and (x, y + 1). Its runs are the boundaries that lead away from it on either side,
// at right angles to it.
#pragma once

#include <cstdint>

#include "kernel/edge_map.h"
#include "kernel/sides.h"

/// Length in pixels of the run that meets the piece at (x, y) on one side; 0 when there is none.
/// Asked at a piece (R for the sides left and right, D for up and down) or at the far end of the
/// opposite run.
template <Side side>
[[nodiscard]] int RunLength(const EdgeMap& map, int x, int y) noexcept;

inline constexpr auto& LeftRun = RunLength<Side::left>;
inline constexpr auto& RightRun = RunLength<Side::right>;
inline constexpr auto& UpRun = RunLength<Side::up>;
inline constexpr auto& DownRun = RunLength<Side::down>;

/// Length of the line one pixel thick that ends at the piece on this side, where its mask says that
/// there is one; lengths above 5 are compressed.
template <Side side>
[[nodiscard]] int ThinLineLength(const EdgeMap& map, int x, int y) noexcept;

/// Whether the 2 x 2 pixels with top-left (bx, by) form a closed block without inner boundaries; by
/// may be -1.
[[nodiscard]] bool IsolatedBlock(const EdgeMap& map, int bx, int by) noexcept;

/// Whether an isolated block touches the given side of the piece at (x, y), which may lie one pixel
/// outside.
template <Side side>
[[nodiscard]] bool BlockNear(const EdgeMap& map, int x, int y) noexcept;

/// Ramp length in percent of a run of n > 0 pixels that has m pixels as seen from its far end, 0
/// where there is none; away from isolated blocks. May be 0 or negative.
[[nodiscard]] constexpr std::int64_t LengthFactorOf(int n, int m, std::int32_t softness) noexcept {
    if (m == 0) return softness;
    return (2 * std::int64_t{n} - m) * softness * 100 / (std::int64_t{n} * 140);
}

/// Ramp length in percent of the run n > 0 on this side of the piece at (x, y); may be 0 or
/// negative.
template <Side side>
[[nodiscard]] std::int64_t LengthFactor(const EdgeMap& map, int n, int x, int y,
                                        std::int32_t softness) noexcept;
