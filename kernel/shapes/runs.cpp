#include "kernel/shapes/runs.h"

#include <algorithm>
#include <cassert>

namespace {

// Lines longer than this count only half of what is beyond it.
constexpr int fullThinLine = 5;

struct Run {
    int length;
    bool closed;
};

template <Side side, int c>
Run MeasureRun(const RunPlace<side, c, FlagsAround>& place) {
    if (place.barred()) return {0, false};
    int length = 0;
    auto cell = place;
    for (; cell.open(1); cell = cell.ahead()) ++length;
    if (length > longestShortRun && !place.goesOn()) return {0, false};
    return {length, length > 0 && cell.closed()};
}

// Whether the 2 x 2 pixels with top-left (bx, by) form a closed block without inner boundaries; by
// may be -1.
//
//       -   -
//     | .   . |
//     | .   . |
//       -   -
bool IsolatedBlock(const EdgeMap& map, int bx, int by) noexcept {
    assert(by >= -1);
    return map.R(bx - 1, by) && map.R(bx - 1, by + 1) && map.R(bx + 1, by) &&
           map.R(bx + 1, by + 1) && map.D(bx, by - 1) && map.D(bx, by + 1) &&
           map.D(bx + 1, by - 1) && map.D(bx + 1, by + 1) && !map.R(bx, by) && !map.R(bx, by + 1) &&
           !map.D(bx, by) && !map.D(bx + 1, by);
}

// Whether an isolated block touches the given side of the piece at (x, y), which may lie one pixel
// outside.
template <Side side>
bool BlockNear(const EdgeMap& map, int x, int y) noexcept {
    assert(x >= -1 && x <= map.width() && y >= -1 && y <= map.height());
    if (y < 0) return false;  // all clear out there, and the map has no row further up
    constexpr int step = StepOf(side);
    constexpr int nearest = step < 0 ? 0 : 1;
    const SideView<side, FlagsAround> view(FlagsAround(map, x, y));
    const bool here{view.beside(nearest, 0)};
    if (here == bool{view.beside(nearest, -1)}) return false;
    const Offset block = AlongSide<side>(step, here ? -1 : 0);
    return IsolatedBlock(map, x + block.dx, y + block.dy);
}

}  // namespace

template <Side side>
int RunLength(const EdgeMap& map, int x, int y) noexcept {
    assert(x >= 0 && x < map.width() && y >= 0 && y < map.height());
    const FlagsAround flags(map, x, y);
    const Run outer = MeasureRun(RunPlace<side, -1, FlagsAround>(flags));
    if (outer.closed) return outer.length;  // what crosses there closes the other place too
    return std::max(outer.length, MeasureRun(RunPlace<side, 0, FlagsAround>(flags)).length);
}

template <Side side>
int ThinLineLength(const EdgeMap& map, int x, int y) noexcept {
    SideView<side, FlagsAround> pixel{FlagsAround(map, x, y)};
    assert(pixel.onLine(pixel.step));
    int length = 0;
    for (; pixel.onLine(pixel.step); pixel = pixel.ahead()) ++length;
    return length > fullThinLine ? (length - fullThinLine) / 2 + fullThinLine : length;
}

template <Side side>
std::int64_t LengthFactor(const EdgeMap& map, int n, int x, int y, std::int32_t softness) noexcept {
    assert(n > 0);
    const Offset reach = AlongSide<side>(StepOf(side) * (n + 1), 0);
    const int farX = x + reach.dx;
    const int farY = y + reach.dy;
    const bool inside = farX >= 0 && farX < map.width() && farY >= 0 && farY < map.height();
    const int m = inside ? RunLength<Opposite(side)>(map, farX, farY) : 0;
    if (n == 1 && m == 1) {
        const std::int64_t percent = softness;
        if (BlockNear<side>(map, x, y)) return percent * 10 / 100;
        constexpr Offset next = AlongSide<side>(0, 1);
        if (BlockNear<side>(map, x + next.dx, y + next.dy) ||
            BlockNear<side>(map, x - next.dx, y - next.dy)) {
            return percent * 36 / 100;
        }
    }
    return LengthFactorOf(n, m, softness);
}

#define NEVREL_INSTANTIATE(side)                                          \
    template int RunLength<side>(const EdgeMap&, int, int) noexcept;      \
    template int ThinLineLength<side>(const EdgeMap&, int, int) noexcept; \
    template std::int64_t LengthFactor<side>(const EdgeMap&, int, int, int, std::int32_t) noexcept

NEVREL_INSTANTIATE(Side::left);
NEVREL_INSTANTIATE(Side::right);
NEVREL_INSTANTIATE(Side::up);
NEVREL_INSTANTIATE(Side::down);
