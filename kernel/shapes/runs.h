// The runs that meet a piece: where they may lie, how long they are, and how long a ramp along them
// is to be.
//
// A piece is one pixel's length of boundary: R(x, y) between (x, y) and (x + 1, y), or D(x, y)
// between (x, y) and (x, y + 1). Its runs are the boundaries that lead away from it on either side,
// at right angles to it. The left side of a vertical piece |, on the right of pixel o, with c
// counting pixels across the way (see sides.h):
//
//      c = -1     .   .   .   .   .
//                 -   -   -             a run of three cells in the outer place, between -1 and 0
//      c =  0     .   .   .   o | .
//                 -   -   -             a run in the inner place, between 0 and 1
//      c =  1     .   .   .   .   .
#pragma once

#include <cstdint>

#include "kernel/edges/edge_map.h"
#include "kernel/shapes/sides.h"

/// A longer run counts only if its boundary goes on behind the piece.
inline constexpr int longestShortRun = 2;

/// One of the two places where a run may lie beside a piece, as its flags show it: between c and
/// c + 1, with c = -1 or 0.
template <Side side, int c, typename Flags>
class RunPlace {
    using View = SideView<side, Flags>;

  public:
    explicit RunPlace(const Flags& flags) : at_(flags) {}

    /// Cell i of the run, counted from the piece on, the first being 1.
    [[nodiscard]] auto open(int i) const { return at_.open(i * View::step, c); }

    /// No run begins here: the ramp's source pixel differs from the one diagonally ahead of it,
    /// across the run's boundary. Asked a pixels along the axis, where a run may be looked at back.
    [[nodiscard]] auto barred(int a = 0) const {
        if constexpr (c < 0) return at_.outward(a, -1);
        return at_.inward(a, 0);
    }

    /// The run's boundary goes on behind the piece.
    [[nodiscard]] auto goesOn() const { return at_.beside(View::behind, -1 - c); }

    /// The run ends at a boundary that crosses the piece's own row, asked at its last cell.
    [[nodiscard]] auto closed() const { return at_.crossing(View::step, 0); }

    /// A run begins here and counts.
    [[nodiscard]] auto stands() const {
        static_assert(longestShortRun == 2);
        return ~barred() & open(1) & ~(open(2) & open(3) & ~goesOn());
    }

    /// The same from the next cell.
    [[nodiscard]] RunPlace ahead() const { return RunPlace(at_.ahead()); }

  private:
    explicit RunPlace(const View& at) : at_(at) {}

    View at_;
};

/// Length in pixels of the run that meets the piece at (x, y) on one side; 0 when there is none.
/// Asked at a piece (R for the sides left and right, D for up and down) or at the far end of the
/// opposite run.
template <Side side>
[[nodiscard]] int RunLength(const EdgeMap& map, int x, int y) noexcept;

/// Length of the line one pixel thick that ends at the piece on this side, where the patterns say
/// that there is one; what is beyond 5 pixels counts half.
template <Side side>
[[nodiscard]] int ThinLineLength(const EdgeMap& map, int x, int y) noexcept;

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
