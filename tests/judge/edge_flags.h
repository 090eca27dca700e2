// The edge flags of a picture and the scan that sets them.
#pragma once

#include <functional>

#include "tests/judge/judge.h"

namespace judge {

enum Flag : unsigned char { edgeRight = 1, edgeDown = 2, edgeDiagonal = 4, edgeAntiDiagonal = 8 };

/// One byte of flags per pixel. Every position outside the picture, however far, reads as clear.
struct EdgeFlags {
    Picture<unsigned char> bytes;

    int width() const { return bytes.width; }
    int height() const { return bytes.height; }
    bool has(int x, int y, int flags) const {
        return bytes.holds(x, y) && (bytes.at(x, y) & flags) != 0;
    }

    /// (x, y) and (x + 1, y) differ.
    bool R(int x, int y) const { return has(x, y, edgeRight); }
    /// (x, y) and (x, y + 1) differ.
    bool D(int x, int y) const { return has(x, y, edgeDown); }
    /// (x, y) and (x + 1, y + 1) differ.
    bool G(int x, int y) const { return has(x, y, edgeDiagonal); }
    /// (x + 1, y) and (x, y + 1) differ.
    bool A(int x, int y) const { return has(x, y, edgeAntiDiagonal); }

    /// With rows and columns exchanged: R(x, y) is D(y, x), and the diagonals stay what they are.
    EdgeFlags transposed() const {
        EdgeFlags result{Picture<unsigned char>(height(), width())};
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x)
                result.bytes.at(y, x) =
                    static_cast<unsigned char>(R(x, y) * edgeDown | D(x, y) * edgeRight |
                                               (bytes.at(x, y) & ~(edgeRight | edgeDown)));
        return result;
    }
};

/// Whether the pixels at (x1, y1) and (x2, y2) form an edge.
using FormEdge = std::function<bool(int x1, int y1, int x2, int y2)>;

/// Sets the flags of one pixel, or of one group of four columns.
struct Scan {
    EdgeFlags& flags;
    const FormEdge& formEdge;

    void set(int x, int y, Flag flag, bool edge) const {
        if (edge) flags.bytes.at(x, y) = static_cast<unsigned char>(flags.bytes.at(x, y) | flag);
    }
    void right(int x, int y) const { set(x, y, edgeRight, formEdge(x, y, x + 1, y)); }
    void down(int x, int y) const { set(x, y, edgeDown, formEdge(x, y, x, y + 1)); }
    void straight(int x, int y) const {
        right(x, y);
        down(x, y);
    }
    void diagonals(int x, int y) const {
        set(x, y, edgeDiagonal, formEdge(x, y, x + 1, y + 1));
        set(x, y, edgeAntiDiagonal, formEdge(x + 1, y, x, y + 1));
    }

    /// The diagonals of a group's first three columns are looked at only once the group has some
    /// flag.
    void group(int x, int y) const {
        const auto any = [&] {
            for (int k = 0; k < 4; ++k)
                if (flags.bytes.at(x + k, y) != 0) return true;
            return false;
        };
        straight(x, y);
        straight(x + 1, y);
        if (any()) diagonals(x, y);
        straight(x + 2, y);
        if (any()) diagonals(x + 1, y);
        straight(x + 3, y);
        if (any()) diagonals(x + 2, y);
        diagonals(x + 3, y);
    }
};

/// Scans a picture of that size: body with its groups of four columns, last row, last column.
inline EdgeFlags DetectEdges(int width, int height, const FormEdge& formEdge) {
    EdgeFlags flags{Picture<unsigned char>(width, height)};
    const Scan scan{flags, formEdge};
    const int groupsEnd = (width - 1) / 4 * 4;
    for (int y = 0; y <= height - 2; ++y) {
        for (int x = 0; x < groupsEnd; x += 4) scan.group(x, y);
        for (int x = groupsEnd; x <= width - 2; ++x) {
            scan.straight(x, y);
            scan.diagonals(x, y);
        }
    }
    for (int x = 0; x <= width - 2; ++x) scan.right(x, height - 1);
    for (int y = 0; y <= height - 2; ++y) scan.down(width - 1, y);
    return flags;
}

}  // namespace judge
