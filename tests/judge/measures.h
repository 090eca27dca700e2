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

/// A 45-degree staircase that continues a straight piece at (x, y); all offsets are relative to (x, y).
struct Staircase {
    bool vertical;  ///< traced along R flags from a piece with D; otherwise along D flags from a piece with R
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

/// A question about a column of a horizontal walk or a row of a vertical one.
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

/// The measures of one picture's edge flags; lengths in pixels, factors in percent.
struct Measures : EdgeFlags {
    int leftRun(int x, int y) const {
        return MeasureRun({.skipFirst = G(x, y - 1) || R(x - 1, y),
                           .open = [=, this](int c) { return R(c, y - 1) || !D(c, y - 1); },
                           .closes = [=, this](int c) { return R(c - 1, y); },
                           .longSurvivesFirst = D(x + 1, y),
                           .skipSecond = A(x, y),
                           .nothingSecond = R(x - 1, y),
                           .stop = [=, this](int c) { return R(c, y + 1) || !D(c, y); },
                           .longSurvivesSecond = D(x + 1, y - 1)},
                          x, -1);
    }

    int rightRun(int x, int y) const {
        return MeasureRun({.skipFirst = A(x, y - 1) || R(x + 1, y),
                           .open = [=, this](int c) { return R(c, y - 1) || !D(c, y - 1); },
                           .closes = [=, this](int c) { return R(c + 1, y); },
                           .longSurvivesFirst = D(x, y),
                           .skipSecond = G(x, y),
                           .nothingSecond = R(x + 1, y),
                           .stop = [=, this](int c) { return R(c, y + 1) || !D(c, y); },
                           .longSurvivesSecond = D(x, y - 1)},
                          x, +1);
    }

    int upRun(int x, int y) const {
        return MeasureRun({.skipFirst = G(x - 1, y) || D(x, y - 1),
                           .open = [=, this](int r) { return D(x - 1, r) || !R(x - 1, r); },
                           .closes = [=, this](int r) { return D(x, r - 1); },
                           .longSurvivesFirst = R(x, y + 1),
                           .skipSecond = A(x, y),
                           .nothingSecond = D(x, y - 1),
                           .stop = [=, this](int r) { return D(x + 1, r) || !R(x, r); },
                           .longSurvivesSecond = R(x - 1, y + 1)},
                          y, -1);
    }

    int downRun(int x, int y) const {
        return MeasureRun({.skipFirst = A(x - 1, y) || D(x, y + 1),
                           .open = [=, this](int r) { return D(x - 1, r) || !R(x - 1, r); },
                           .closes = [=, this](int r) { return D(x, r + 1); },
                           .longSurvivesFirst = R(x, y),
                           .skipSecond = G(x, y),
                           .nothingSecond = D(x, y + 1),
                           .stop = [=, this](int r) { return D(x + 1, r) || !R(x, r); },
                           .longSurvivesSecond = R(x - 1, y)},
                          y, +1);
    }

    /// The run on that side of the piece; 0 above row 0.
    int run(Side side, int x, int y) const {
        if (side == left) return leftRun(x, y);
        if (side == right) return rightRun(x, y);
        if (side == up) return y == 0 ? 0 : upRun(x, y);
        return downRun(x, y);
    }

    int thinLineLength(Side side, int x, int y) const {
        const auto stopInRow = [&](int c) {
            return R(c, y) || R(c, y - 1) || !D(c, y - 1) || R(c, y + 1) || !D(c, y);
        };
        const auto stopInColumn = [&](int r) {
            return D(x, r) || D(x - 1, r) || !R(x - 1, r) || D(x + 1, r) || !R(x, r);
        };
        int j = 0;
        switch (side) {
            case left:
                if (G(x, y - 1) || D(x + 1, y - 1) || R(x + 1, y) || A(x, y) || D(x + 1, y)) return 0;
                for (int c = x - 1; !stopInRow(c); --c) ++j;
                break;
            case right:
                if (D(x, y - 1) || A(x, y - 1) || R(x - 1, y) || D(x, y) || G(x, y)) return 0;
                for (int c = x + 1; !stopInRow(c); ++c) ++j;
                break;
            case up:
                if (G(x - 1, y) || A(x, y) || R(x - 1, y + 1) || R(x, y + 1) || D(x, y + 1)) return 0;
                for (int r = y - 1; !stopInColumn(r); --r) ++j;
                break;
            case down:
                if (D(x, y - 1) || R(x - 1, y) || R(x, y) || A(x - 1, y) || G(x, y)) return 0;
                for (int r = y + 1; !stopInColumn(r); ++r) ++j;
                break;
        }
        return j > 5 ? (j - 5) / 2 + 5 : j;
    }

    bool isolatedBlock(int bx, int by) const {
        return R(bx - 1, by) && R(bx - 1, by + 1) && R(bx + 1, by) && R(bx + 1, by + 1) && D(bx, by - 1) &&
               D(bx, by + 1) && D(bx + 1, by - 1) && D(bx + 1, by + 1) &&
               !(R(bx, by) || R(bx, by + 1) || D(bx, by) || D(bx + 1, by));
    }

    bool blockNear(Side side, int x, int y) const {
        if (side == right && x >= width() - 1) return false;
        if (side == down && y >= height() - 1) return false;
        if (side == left || side == right) {
            const int column = side == left ? x : x + 1;
            const bool c = D(column, y);
            const bool p = y == 0 ? false : D(column, y - 1);
            return c != p && isolatedBlock(side == left ? x - 1 : x + 1, c ? y - 1 : y);
        }
        const int row = side == up ? y : y + 1;
        const bool c = R(x, row);
        const bool p = x == 0 ? false : R(x - 1, row);
        return c != p && isolatedBlock(c ? x - 1 : x, side == up ? y - 1 : y + 1);
    }

    /// The run that comes back from the far end of a run of n.
    int oppositeRun(Side side, int n, int x, int y) const {
        if (side == left) return x - n - 1 >= 0 ? rightRun(x - n - 1, y) : 0;
        if (side == right) return x + n + 1 < width() ? leftRun(x + n + 1, y) : 0;
        if (side == up) return y - n - 1 >= 0 ? downRun(x, y - n - 1) : 0;
        return y + n + 1 < height() ? upRun(x, y + n + 1) : 0;
    }

    /// `n` is the run on that side, not 0.
    int lengthFactor(Side side, int n, int x, int y, int softness) const {
        const int m = oppositeRun(side, n, x, y);
        if (m == 0) return softness;
        if (n == 1 && m == 1) {
            if (blockNear(side, x, y)) return softness * 10 / 100;
            const bool acrossRows = side == left || side == right;
            if (acrossRows ? blockNear(side, x, y + 1) : blockNear(side, x + 1, y))
                return softness * 36 / 100;
            if (acrossRows ? blockNear(side, x, y - 1) : blockNear(side, x - 1, y))
                return softness * 36 / 100;
        }
        return (2 * n - m) * softness * 100 / (n * 140);
    }

    int staircaseLength(const Staircase& v, int x, int y) const {
        const auto counts = [&](int cx, int cy) {
            const Offset other = v.vertical ? Offset{cx, cy - 1} : Offset{cx - 1, cy};
            const bool stopped =
                v.antiDiagonalStops ? A(other.x, other.y) || A(cx, cy) : G(other.x, other.y) || G(cx, cy);
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
};

}  // namespace judge
