// Smooth curves through given points, and where to put them.
//
// Only additions, multiplications, divisions and square roots are used, which every platform rounds
// alike, so that a picture comes out the same everywhere.
#pragma once

#include <cstddef>
#include <vector>

struct Point {
    double x, y;
};

/// The point at distance 1 from the origin in a direction given in turns, clockwise from the right.
[[nodiscard]] Point Direction(double turns);

/// A point that a curve passes through: smoothly, or with a corner.
struct Node {
    double x, y;
    bool corner = false;
};
inline constexpr bool corner = true;

using Nodes = std::vector<Node>;

/// Nodes as text: "x,y" for each, separated by blanks, with a caret after those that are corners.
[[nodiscard]] Nodes operator""_nodes(const char* text, std::size_t length);

/// The nodes of an ellipse.
[[nodiscard]] Nodes Ellipse(Point centre, double radiusX, double radiusY);

/// The nodes, all of them corners.
[[nodiscard]] Nodes Straight(Nodes nodes);

/// The nodes, all of them moved.
[[nodiscard]] Nodes Moved(Nodes nodes, Point by);

/// Where a drawing lies on the picture: scaled, mirrored, turned, moved.
struct Placement {
    double xx = 1, xy = 0, yx = 0, yy = 1;
    Point origin{0, 0};

    [[nodiscard]] Point apply(double x, double y) const {
        return {xx * x + xy * y + origin.x, yx * x + yy * y + origin.y};
    }
    /// The placement of something placed by `inner` on a drawing that is itself placed by this.
    [[nodiscard]] Placement then(const Placement& inner) const;
};

enum class Ends { open, closed };

/// The curve through the placed nodes as a line of points no more than about three pixels apart; a
/// closed one does not repeat its first point.
[[nodiscard]] std::vector<Point> Flatten(const Nodes& nodes, Ends ends, const Placement& placement);
