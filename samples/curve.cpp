#include "samples/curve.h"

#include <cassert>
#include <cmath>
#include <sstream>
#include <string>

namespace {

constexpr double pi = 3.14159265358979323846;

Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
Point operator*(double k, Point a) { return {k * a.x, k * a.y}; }
double Length(Point a) { return std::sqrt(a.x * a.x + a.y * a.y); }

/// Sine by its series, for angles up to an eighth of a turn.
double SmallSine(double angle) {
    const double s = angle * angle;
    return angle * (1 - s / 6 * (1 - s / 20 * (1 - s / 42 * (1 - s / 72 * (1 - s / 110)))));
}

/// Cosine likewise.
double SmallCosine(double angle) {
    const double s = angle * angle;
    return 1 - s / 2 * (1 - s / 12 * (1 - s / 30 * (1 - s / 56 * (1 - s / 90 * (1 - s / 132)))));
}

/// The direction of the curve at point `i`, as long as the straight way `chord` of the piece it is
/// asked for.
Point Tangent(const std::vector<Point>& points, const Nodes& nodes, std::size_t i, Point chord,
              Ends ends) {
    const std::size_t n = points.size();
    const bool atEnd = ends == Ends::open && (i == 0 || i == n - 1);
    if (nodes[i].corner || atEnd) return chord;
    const Point across = points[(i + 1) % n] - points[(i + n - 1) % n];
    const double length = Length(across);
    return length > 0 ? Length(chord) / length * across : chord;
}

Point Hermite(Point from, Point fromTangent, Point to, Point toTangent, double t) {
    const double u = 1 - t;
    return u * u * (1 + 2 * t) * from + t * u * u * fromTangent + t * t * (3 - 2 * t) * to -
           t * t * u * toTangent;
}

}  // namespace

Point Direction(double turns) {
    const double eighths = std::floor(turns * 8 + 0.5);
    const double angle = (turns - eighths / 8) * 2 * pi;
    const double s = SmallSine(angle);
    const double c = SmallCosine(angle);
    const double h = std::sqrt(0.5);
    Point direction{c, s};
    const int steps = static_cast<int>(eighths - 8 * std::floor(eighths / 8));
    for (int i = 0; i < steps; ++i)
        direction = {h * (direction.x - direction.y), h * (direction.x + direction.y)};
    return direction;
}

Nodes operator""_nodes(const char* text, std::size_t length) {
    std::istringstream words(std::string(text, length));
    Nodes nodes;
    Node node;
    char comma = ',';
    while (words >> node.x >> comma >> node.y) {
        node.corner = words.peek() == '^';
        if (node.corner) words.get();
        nodes.push_back(node);
    }
    assert(words.eof() && comma == ',');
    return nodes;
}

Nodes Ellipse(Point centre, double radiusX, double radiusY) {
    constexpr int count = 12;
    Nodes nodes;
    for (int i = 0; i < count; ++i) {
        const Point d = Direction(static_cast<double>(i) / count);
        nodes.push_back({centre.x + radiusX * d.x, centre.y + radiusY * d.y});
    }
    return nodes;
}

Nodes Straight(Nodes nodes) {
    for (Node& node : nodes) node.corner = true;
    return nodes;
}

Nodes Moved(Nodes nodes, Point by) {
    for (Node& node : nodes) {
        node.x += by.x;
        node.y += by.y;
    }
    return nodes;
}

Placement Placement::then(const Placement& inner) const {
    return {xx * inner.xx + xy * inner.yx, xx * inner.xy + xy * inner.yy,
            yx * inner.xx + yy * inner.yx, yx * inner.xy + yy * inner.yy,
            apply(inner.origin.x, inner.origin.y)};
}

std::vector<Point> Flatten(const Nodes& nodes, Ends ends, const Placement& placement) {
    assert(nodes.size() >= 2);
    const std::size_t n = nodes.size();
    std::vector<Point> points;
    for (const Node& node : nodes) points.push_back(placement.apply(node.x, node.y));

    std::vector<Point> line;
    const std::size_t pieces = ends == Ends::closed ? n : n - 1;
    for (std::size_t i = 0; i < pieces; ++i) {
        const std::size_t j = (i + 1) % n;
        const Point chord = points[j] - points[i];
        const Point fromTangent = Tangent(points, nodes, i, chord, ends);
        const Point toTangent = Tangent(points, nodes, j, chord, ends);
        const int steps = 2 + static_cast<int>(Length(chord) / 3);
        for (int k = 0; k < steps; ++k) {
            line.push_back(Hermite(points[i], fromTangent, points[j], toTangent,
                                   static_cast<double>(k) / steps));
        }
    }
    if (ends == Ends::open) line.push_back(points.back());
    return line;
}
