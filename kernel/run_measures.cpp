#include "kernel/run_measures.h"

#include <algorithm>
#include <cassert>

#include "kernel/edge_flags.h"

namespace {

template <Side side>
using MapView = SideView<side, MapFlags>;

// A longer run stands only if its boundary goes on behind the piece.
constexpr int longestShortRun = 2;

// Lines longer than this count only half of what is beyond it.
constexpr int fullThinLine = 5;

struct OuterRun {
    int length;
    bool closed;  // it ends at a boundary that crosses the piece's own row, so nothing longer can
                  // be found
};

// The run between c = -1 and c = 0. For the left side of a vertical piece P:
//
//      c = -1   ______________
//      c =  0   |             P      closed by the boundary at its left end; open where row -1 has
//      a crossing
//                                    boundary, or the run just ends
template <Side side>
OuterRun MeasureOuterRun(const MapView<side>& piece) {
    if (piece.outward(0, -1)) return {0, false};
    int length = 0;
    MapView<side> cell = piece.ahead();
    for (; cell.open(0, -1); cell = cell.ahead()) ++length;
    if (length > longestShortRun && !piece.beside(piece.behind, 0)) return {0, false};
    return {length, length > 0 && cell.crossing(0, 0)};
}

// The run between c = 0 and c = 1.
template <Side side>
int MeasureInnerRun(const MapView<side>& piece) {
    int length = 0;
    for (MapView<side> cell = piece.ahead(); cell.open(0, 0); cell = cell.ahead()) ++length;
    return length > longestShortRun && !piece.beside(piece.behind, -1) ? 0 : length;
}

}  // namespace

template <Side side>
int RunLength(const EdgeMap& map, int x, int y) noexcept {
    assert(x >= 0 && x < map.width() && y >= 0 && y < map.height());
    const MapView<side> view(MapFlags(map, x, y));
    const OuterRun outer = MeasureOuterRun(view);
    if (outer.closed || view.inward(0, 0)) return outer.length;
    return std::max(outer.length, MeasureInnerRun(view));
}

template <Side side>
int ThinLineLength(const EdgeMap& map, int x, int y) noexcept {
    const auto onLine = [](const MapView<side>& cell) {
        return cell.open(0, -1) && cell.open(0, 0);
    };
    MapView<side> cell = MapView<side>(MapFlags(map, x, y)).ahead();
    assert(onLine(cell));
    int length = 0;
    for (; onLine(cell); cell = cell.ahead()) ++length;
    return length > fullThinLine ? (length - fullThinLine) / 2 + fullThinLine : length;
}

bool IsolatedBlock(const EdgeMap& map, int bx, int by) noexcept {
    assert(by >= -1);
    return map.R(bx - 1, by) && map.R(bx - 1, by + 1) && map.R(bx + 1, by) &&
           map.R(bx + 1, by + 1) && map.D(bx, by - 1) && map.D(bx, by + 1) &&
           map.D(bx + 1, by - 1) && map.D(bx + 1, by + 1) && !map.R(bx, by) && !map.R(bx, by + 1) &&
           !map.D(bx, by) && !map.D(bx + 1, by);
}

template <Side side>
bool BlockNear(const EdgeMap& map, int x, int y) noexcept {
    assert(x >= -1 && x <= map.width() && y >= -1 && y <= map.height());
    if (y < 0) return false;  // all clear out there, and the map has no row further up
    constexpr int step = StepOf(side);
    constexpr int nearest = step < 0 ? 0 : 1;
    const MapView<side> view(MapFlags(map, x, y));
    const bool here = view.beside(nearest, 0);
    if (here == view.beside(nearest, -1)) return false;
    const Offset block = AlongSide<side>(step, here ? -1 : 0);
    return IsolatedBlock(map, x + block.dx, y + block.dy);
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
    template bool BlockNear<side>(const EdgeMap&, int, int) noexcept;     \
    template std::int64_t LengthFactor<side>(const EdgeMap&, int, int, int, std::int32_t) noexcept

NEVREL_INSTANTIATE(Side::left);
NEVREL_INSTANTIATE(Side::right);
NEVREL_INSTANTIATE(Side::up);
NEVREL_INSTANTIATE(Side::down);
