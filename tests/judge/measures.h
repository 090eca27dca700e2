// Every measure that the smoothing pass takes of the edge flags.
#pragma once

#include <algorithm>
#include <array>
#include <functional>

#include "tests/judge/edge_flags.h"

namespace judge {

/// Left and right of a vertical piece, above and below a horizontal one.
enum Side { left = 0, right = 1, up = 2, down = 3 };

struct Offset {
    int x, y;
};

/// A 45-degree staircase that continues a straight piece at (x, y); all offsets are relative to (x,
/// y).
struct Staircase {
    bool vertical;  ///< traced along R flags from a piece with D; otherwise along D flags from a
                    ///< piece with R
    Offset start;
    Offset step;
    bool antiDiagonalStops;  ///< the stop flags are A; otherwise G
    Offset destination;      ///< of the main ramp's first blend
    Offset source;           ///< of that blend, and the pixel that is restored
    bool restores;
};

inline constexpr std::array<Staircase, 4> horizontalStaircases = {{
    {false, {1, -1}, {1, -1}, true, {1, 0}, {1, -1}, true},    // H1 up-right
    {false, {0, 1}, {-1, 1}, true, {0, 1}, {0, 2}, false},     // H2 down-left
    {false, {0, -1}, {-1, -1}, false, {0, 0}, {0, -1}, true},  // H3 up-left
    {false, {1, 1}, {1, 1}, false, {1, 1}, {1, 2}, false},     // H4 down-right
}};
inline constexpr std::array<Staircase, 4> verticalStaircases = {{
    {true, {0, 0}, {1, -1}, true, {0, 0}, {1, 0}, true},       // V1 up-right
    {true, {-2, 1}, {-1, 1}, true, {-1, 1}, {-2, 1}, false},   // V2 down-left
    {true, {-2, 0}, {-1, -1}, false, {-1, 0}, {-2, 0}, true},  // V3 up-left
    {true, {0, 1}, {1, 1}, false, {0, 1}, {1, 1}, false},      // V4 down-right
}};

/// A question about a column of a walk.
using Test = std::function<bool(int)>;

/// One run measure: what its two phases ask.
struct RunRule {
    bool skipFirst;
    Test open;    ///< the position does not belong to the first phase's run
    Test closes;  ///< the run ends after this position; in both phases
    bool longSurvivesFirst;
    bool skipSecond;
    bool nothingSecond;
    Test stop;  ///< the position does not belong to the second phase's run
    bool longSurvivesSecond;
};

/// `start` is the piece's own position; the walk begins one step from it.
inline int MeasureRun(const RunRule& rule, int start, int step) {
    int k = 0;
    if (!rule.skipFirst) {
        bool closed = false;
        for (int p = start + step; !closed && !rule.open(p); p += step) {
            ++k;
            closed = rule.closes(p);
        }
        if (k >= 3 && !rule.longSurvivesFirst)
            k = 0;
        else if (closed)
            return k;
    }
    if (rule.skipSecond) return k;
    int j = 0;
    if (!rule.nothingSecond) {
        for (int p = start + step; !rule.stop(p); p += step) {
            ++j;
            if (rule.closes(p)) break;
        }
        if (j >= 3 && !rule.longSurvivesSecond) j = 0;
    }
    return std::max(k, j);
}

/// The measures left and right of a piece with R; lengths in pixels, factors in percent. Seen from
/// the right, G stands where A does from the left, and the piece's columns are exchanged.
struct RowMeasures : EdgeFlags {
    int run(Side side, int x, int y) const {
        const bool isLeft = side == left;
        const int step = isLeft ? -1 : 1, behind = isLeft ? x + 1 : x;
        return MeasureRun({.skipFirst = (isLeft ? G(x, y - 1) : A(x, y - 1)) || R(x + step, y),
                           .open = [=, this](int c) { return R(c, y - 1) || !D(c, y - 1); },
                           .closes = [=, this](int c) { return R(c + step, y); },
                           .longSurvivesFirst = D(behind, y),
                           .skipSecond = isLeft ? A(x, y) : G(x, y),
                           .nothingSecond = R(x + step, y),
                           .stop = [=, this](int c) { return R(c, y + 1) || !D(c, y); },
                           .longSurvivesSecond = D(behind, y - 1)},
                          x, step);
    }

    int thinLineLength(Side side, int x, int y) const {
        const bool isLeft = side == left;
        const int step = isLeft ? -1 : 1, behind = isLeft ? x + 1 : x;
        if (isLeft ? G(x, y - 1) || A(x, y) : A(x, y - 1) || G(x, y)) return 0;
        if (D(behind, y - 1) || D(behind, y) || R(x - step, y)) return 0;
        int j = 0;
        for (int c = x + step; !(R(c, y) || R(c, y - 1) || !D(c, y - 1) || R(c, y + 1) || !D(c, y));
             c += step)
            ++j;
        return j > 5 ? (j - 5) / 2 + 5 : j;
    }

    bool isolatedBlock(int bx, int by) const {
        return R(bx - 1, by) && R(bx - 1, by + 1) && R(bx + 1, by) && R(bx + 1, by + 1) &&
               D(bx, by - 1) && D(bx, by + 1) && D(bx + 1, by - 1) && D(bx + 1, by + 1) &&
               !(R(bx, by) || R(bx, by + 1) || D(bx, by) || D(bx + 1, by));
    }

    bool blockNear(Side side, int x, int y) const {
        if (side == right && x >= width() - 1) return false;
        const int column = side == left ? x : x + 1;
        const bool c = D(column, y), p = y == 0 ? false : D(column, y - 1);
        return c != p && isolatedBlock(side == left ? x - 1 : x + 1, c ? y - 1 : y);
    }

    /// The run that comes back from the far end of a run of n.
    int oppositeRun(Side side, int n, int x, int y) const {
        if (side == left) return x - n - 1 >= 0 ? run(right, x - n - 1, y) : 0;
        return x + n + 1 < width() ? run(left, x + n + 1, y) : 0;
    }

    /// `n` is the run on that side, not 0.
    int lengthFactor(Side side, int n, int x, int y, int softness) const {
        const int m = oppositeRun(side, n, x, y);
        if (m == 0) return softness;
        if (n == 1 && m == 1) {
            if (blockNear(side, x, y)) return softness * 10 / 100;
            if (blockNear(side, x, y + 1) || blockNear(side, x, y - 1)) return softness * 36 / 100;
        }
        return (2 * n - m) * softness * 100 / (n * 140);
    }
};

/// Every measure; those above and below a piece with D are those of rows, with rows and columns
/// exchanged.
struct Measures : EdgeFlags {
    explicit Measures(const EdgeFlags& flags)
        : EdgeFlags(flags), rows_{flags}, columns_{flags.transposed()} {}

    /// The run on that side of the piece.
    int run(Side side, int x, int y) const {
        return side < up ? rows_.run(side, x, y) : columns_.run(Exchanged(side), y, x);
    }
    int thinLineLength(Side side, int x, int y) const {
        return side < up ? rows_.thinLineLength(side, x, y)
                         : columns_.thinLineLength(Exchanged(side), y, x);
    }
    int lengthFactor(Side side, int n, int x, int y, int softness) const {
        return side < up ? rows_.lengthFactor(side, n, x, y, softness)
                         : columns_.lengthFactor(Exchanged(side), n, y, x, softness);
    }

    int staircaseLength(const Staircase& v, int x, int y) const {
        const auto counts = [&](int cx, int cy) {
            const Offset other = v.vertical ? Offset{cx, cy - 1} : Offset{cx - 1, cy};
            const bool stopped = v.antiDiagonalStops ? A(other.x, other.y) || A(cx, cy)
                                                     : G(other.x, other.y) || G(cx, cy);
            return (v.vertical ? R(cx, cy) : D(cx, cy)) && !stopped;
        };
        int q = 0;
        while (counts(x + v.start.x + q * v.step.x, y + v.start.y + q * v.step.y)) ++q;
        return q;
    }

    bool tipShape(int x, int y) const {
        const bool closedLeft = R(x - 1, y), closedRight = R(x, y);
        const bool closedTop = D(x, y - 1), closedBottom = D(x, y);
        const bool topLeft = G(x - 1, y - 1), topRight = A(x, y - 1);
        const bool bottomLeft = A(x - 1, y), bottomRight = G(x, y);
        const int closed = closedLeft + closedRight + closedTop + closedBottom;
        if (closed < 3) return false;
        if (closed == 4) return (topLeft || bottomRight) && (topRight || bottomLeft);
        if (topLeft && topRight && bottomLeft && bottomRight) return false;
        if (!closedLeft) return topRight && bottomRight;
        if (!closedRight) return topLeft && bottomLeft;
        if (!closedTop) return bottomLeft && bottomRight;
        return topLeft && topRight;
    }

  private:
    static Side Exchanged(Side side) { return side == up ? left : right; }

    RowMeasures rows_, columns_;
};

}  // namespace judge
