// The four sides of a boundary piece, and the map seen along each of them.
#pragma once

#include "kernel/edge_map.h"

/// Left and right of a vertical piece R(x, y), above and below a horizontal piece D(x, y).
enum class Side { left = 0, right = 1, up = 2, down = 3 };

[[nodiscard]] constexpr bool IsHorizontal(Side side) { return side == Side::left || side == Side::right; }
[[nodiscard]] constexpr int StepOf(Side side) { return side == Side::left || side == Side::up ? -1 : 1; }
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

/// The map around (x, y) in a side's own coordinates: `a` pixels along the axis that the side walks (x for
/// left and right, y for up and down), `c` pixels across it. The vertical sides thus see the map transposed.
template <Side side>
class SideView {
  public:
    SideView(const EdgeMap& map, int x, int y) : map_(map), x_(x), y_(y) {}

    /// A boundary across the way, between a and a + 1.
    [[nodiscard]] bool crossing(int a, int c) const {
        return test(a, c, IsHorizontal(side) ? EdgeRight : EdgeDown);
    }
    /// A boundary beside the way, between c and c + 1.
    [[nodiscard]] bool beside(int a, int c) const {
        return test(a, c, IsHorizontal(side) ? EdgeDown : EdgeRight);
    }
    /// The two diagonals of a cell. They change places with the direction of the walk, not with its axis: a
    /// pixel at c = 0 differs from the next one ahead at c = -1 (`outward`, asked at c = -1) or at c = 1
    /// (`inward`).
    [[nodiscard]] bool outward(int a, int c) const {
        return test(a, c, StepOf(side) < 0 ? EdgeDiagonal : EdgeAntiDiagonal);
    }
    [[nodiscard]] bool inward(int a, int c) const {
        return test(a, c, StepOf(side) < 0 ? EdgeAntiDiagonal : EdgeDiagonal);
    }

    /// The position along the axis, and the image's extent there.
    [[nodiscard]] int position() const { return IsHorizontal(side) ? x_ : y_; }
    [[nodiscard]] int extent() const { return IsHorizontal(side) ? map_.width() : map_.height(); }
    [[nodiscard]] int positionAcross() const { return IsHorizontal(side) ? y_ : x_; }

    /// Map coordinates of a position relative to (x, y).
    [[nodiscard]] int mapX(int a, int c) const { return x_ + (IsHorizontal(side) ? a : c); }
    [[nodiscard]] int mapY(int a, int c) const { return y_ + (IsHorizontal(side) ? c : a); }

  private:
    [[nodiscard]] bool test(int a, int c, EdgeFlag flag) const {
        return (map_.flags(mapX(a, c), mapY(a, c)) & flag) != 0;
    }

    const EdgeMap& map_;
    int x_;
    int y_;
};
