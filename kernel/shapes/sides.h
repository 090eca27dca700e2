// The four sides of a boundary piece, and the edge flags seen along each of them.
#pragma once

#include "kernel/edges/edge_map.h"
#include "kernel/pixels/image_view.h"

/// Left and right of a vertical piece R(x, y), above and below a horizontal piece D(x, y).
enum class Side { left, right, up, down };

[[nodiscard]] constexpr bool IsHorizontal(Side side) {
    return side == Side::left || side == Side::right;
}
[[nodiscard]] constexpr int StepOf(Side side) {
    return side == Side::left || side == Side::up ? -1 : 1;
}
[[nodiscard]] constexpr Side Opposite(Side side) {
    switch (side) {
        case Side::left:
            return Side::right;
        case Side::right:
            return Side::left;
        case Side::up:
            return Side::down;
        default:
            return Side::up;
    }
}

/// The offset of a pixels along a side's axis (x for left and right, y for up and down) and c
/// pixels across it.
template <Side side>
[[nodiscard]] constexpr Offset AlongSide(int a, int c) {
    return IsHorizontal(side) ? Offset{a, c} : Offset{c, a};
}

/// Flags by their offset from a pixel, in a side's own coordinates. The vertical sides thus see the
/// map transposed.
///
/// Flags answers test(dx, dy, flag), with a Truth for one pixel or a mask for many.
template <Side side, typename Flags>
class SideView {
  public:
    explicit SideView(const Flags& flags) : flags_(flags) {}

    /// A boundary across the way, between a and a + 1. The piece itself is crossing(0, 0).
    [[nodiscard]] auto crossing(int a, int c) const {
        return test(a, c, IsHorizontal(side) ? EdgeRight : EdgeDown);
    }
    /// A boundary beside the way, between c and c + 1.
    [[nodiscard]] auto beside(int a, int c) const {
        return test(a, c, IsHorizontal(side) ? EdgeDown : EdgeRight);
    }

    /// A cell that a run or line between c and c + 1 can go through: a boundary beside the way, and
    /// none across it.
    [[nodiscard]] auto open(int a, int c) const {
        return beside(a, c) & ~crossing(a, c) & ~crossing(a, c + 1);
    }
    /// A pixel of a line one pixel thick: open on both of its sides.
    [[nodiscard]] auto onLine(int a) const { return open(a, -1) & open(a, 0); }

    /// The two diagonals of a cell; they change places with the direction of the walk, not with its
    /// axis. Going from c = 0 one pixel ahead crosses `outward` of cell (0, -1) on the way to c =
    /// -1 and `inward` of cell (0, 0) on the way to c = 1.
    [[nodiscard]] auto outward(int a, int c) const {
        return test(a, c, StepOf(side) < 0 ? EdgeDiagonal : EdgeAntiDiagonal);
    }
    [[nodiscard]] auto inward(int a, int c) const {
        return test(a, c, StepOf(side) < 0 ? EdgeAntiDiagonal : EdgeDiagonal);
    }

    /// The same one pixel further along the walk.
    [[nodiscard]] SideView ahead() const {
        constexpr Offset next = AlongSide<side>(step, 0);
        return SideView(flags_.moved(next.dx, next.dy));
    }

    /// One step of the walk, and the cell whose `beside` flag continues the run's boundary behind
    /// the piece.
    static constexpr int step = StepOf(side);
    static constexpr int behind = step < 0 ? 1 : 0;

  private:
    [[nodiscard]] auto test(int a, int c, EdgeFlag flag) const {
        const Offset offset = AlongSide<side>(a, c);
        return flags_.test(offset.dx, offset.dy, flag);
    }

    Flags flags_;
};
