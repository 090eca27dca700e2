// The edge map around one pixel, for patterns that name flags by their offset from it.
#pragma once

#include "kernel/edge_map.h"

/// A position relative to the pixel at which a pattern is tested.
struct Offset {
    int dx;
    int dy;
};

/// Flags by offset from (x, y). Rows further up than -1 are not in the map, so a pattern names the flags of a
/// nearer row before those of a farther one: where the nearer row is the border its test fails and ends the
/// pattern.
class Neighbourhood {
  public:
    Neighbourhood(const EdgeMap& map, int x, int y) : map_(map), x_(x), y_(y) {}

    [[nodiscard]] bool R(int dx, int dy) const { return map_.R(x_ + dx, y_ + dy); }
    [[nodiscard]] bool D(int dx, int dy) const { return map_.D(x_ + dx, y_ + dy); }
    [[nodiscard]] bool G(int dx, int dy) const { return map_.G(x_ + dx, y_ + dy); }
    [[nodiscard]] bool A(int dx, int dy) const { return map_.A(x_ + dx, y_ + dy); }

    [[nodiscard]] int x() const { return x_; }
    [[nodiscard]] int y() const { return y_; }
    [[nodiscard]] int width() const { return map_.width(); }
    [[nodiscard]] int height() const { return map_.height(); }

  private:
    const EdgeMap& map_;
    int x_;
    int y_;
};
