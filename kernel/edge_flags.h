// The edge map around a pixel, or around a stretch of pixels, for patterns that name flags by their offset.
#pragma once

#include <bit>
#include <cstdint>

#include "kernel/edge_map.h"
#include "kernel/pixel_mask.h"

/// The flags around one pixel, for walks that stay inside the map.
class MapFlags {
  public:
    MapFlags(const EdgeMap& map, int x, int y) : map_(map), x_(x), y_(y) {}

    [[nodiscard]] bool test(int dx, int dy, EdgeFlag flag) const {
        return (map_.flags(x_ + dx, y_ + dy) & flag) != 0;
    }

  private:
    const EdgeMap& map_;
    int x_;
    int y_;
};

/// The flags around one pixel as masks of that pixel alone (bit 0), clear in rows that the map does not hold.
class PointFlags {
  public:
    PointFlags(const EdgeMap& map, int x, int y) : map_(map), x_(x), y_(y) {}

    [[nodiscard]] PixelMask test(int dx, int dy, EdgeFlag flag) const {
        const int row = y_ + dy;
        const bool inside = row >= 0 && row < map_.height();
        return {inside && (map_.flags(x_ + dx, row) & flag) != 0 ? 1U : 0U};
    }

  private:
    const EdgeMap& map_;
    int x_;
    int y_;
};

/// The flags around a stretch of a row as bit planes: bit i of a row's plane is the flag of column `first` +
/// i. Patterns look at most three columns to the left and two to the right, so that with the first bits left
/// for them `pixels` of the 64 columns can be tested at once.
class WindowFlags {
  public:
    static constexpr int rowsAbove = 3;
    static constexpr int rowsBelow = 2;
    static constexpr int rows = rowsAbove + 1 + rowsBelow;
    static constexpr int columns = 64;
    static constexpr int margin = 4;  // the map's left margin, so that windows start aligned
    static constexpr int pixels = 56;

    struct Row {
        std::uint64_t plane[4];  // in the order of the flags' bits
    };

    [[nodiscard]] Row& row(int dy) { return rows_[dy + rowsAbove]; }

    [[nodiscard]] PixelMask test(int dx, int dy, EdgeFlag flag) const {
        const std::uint64_t plane = rows_[dy + rowsAbove].plane[std::countr_zero(unsigned{flag})];
        return {dx < 0 ? plane << -dx : plane >> dx};
    }

  private:
    Row rows_[rows];
};
