// The edge map around a pixel, for patterns that name flags by their offset.
#pragma once

#include "kernel/edge_map.h"
#include "kernel/pixel_mask.h"

/// The flags around one pixel, for walks that stay inside the map.
class MapFlags {
  public:
    MapFlags(const EdgeMap& map, int x, int y) : at_(map.row(y) + x), stride_(map.stride()) {}

    [[nodiscard]] bool test(int dx, int dy, EdgeFlag flag) const {
        return (at_[dy * stride_ + dx] & flag) != 0;
    }

    /// The same around another pixel.
    [[nodiscard]] MapFlags moved(int dx, int dy) const {
        return {at_ + dy * stride_ + dx, stride_};
    }

  private:
    MapFlags(const std::uint8_t* at, std::ptrdiff_t stride) : at_(at), stride_(stride) {}

    const std::uint8_t* at_;
    std::ptrdiff_t stride_;
};

/// The flags around one pixel as masks of that pixel alone (bit 0), clear in rows that the map does
/// not hold.
class PointFlags {
  public:
    using Mask = PixelMask;
    static constexpr bool settlesRuns = false;

    PointFlags(const EdgeMap& map, int x, int y) : map_(map), x_(x), y_(y) {}

    static void store(Mask mask, std::uint64_t* words) { words[0] = mask.bits; }

    [[nodiscard]] Mask test(int dx, int dy, EdgeFlag flag) const {
        const int row = y_ + dy;
        const bool inside = row >= 0 && row < map_.height();
        return {inside && (map_.flags(x_ + dx, row) & flag) != 0 ? 1U : 0U};
    }

  private:
    const EdgeMap& map_;
    int x_;
    int y_;
};
