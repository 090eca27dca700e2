#include "samples/painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// First and last whole number n with n + 0.5 between `low` and `high`, held to 0 .. `size` - 1.
std::pair<int, int> PixelRange(double low, double high, int size) {
    const double first = std::clamp(std::ceil(low - 0.5), 0.0, static_cast<double>(size));
    const double last = std::clamp(std::ceil(high - 0.5) - 1, -1.0, static_cast<double>(size - 1));
    return {static_cast<int>(first), static_cast<int>(last)};
}

/// Calls `visit` for the pixels whose centres lie inside a closed line, by the even-odd rule.
template <typename Visit>
void VisitInside(const std::vector<Point>& line, Image8& image, Visit visit) {
    std::vector<std::pair<int, double>> crossings;
    for (std::size_t i = 0; i < line.size(); ++i) {
        Point a = line[i];
        Point b = line[(i + 1) % line.size()];
        if (a.y > b.y) std::swap(a, b);
        const auto [first, last] = PixelRange(a.y, b.y, image.height);
        for (int y = first; y <= last; ++y) {
            crossings.emplace_back(y, a.x + (y + 0.5 - a.y) / (b.y - a.y) * (b.x - a.x));
        }
    }
    std::sort(crossings.begin(), crossings.end());
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
        const int y = crossings[i].first;
        const auto [first, last] =
            PixelRange(crossings[i].second, crossings[i + 1].second, image.width);
        for (int x = first; x <= last; ++x) visit(image.at(x, y));
    }
}

double SquaredDistance(Point p, Point a, Point b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squaredLength = dx * dx + dy * dy;
    const double along = (p.x - a.x) * dx + (p.y - a.y) * dy;
    const double t = squaredLength > 0 ? std::clamp(along / squaredLength, 0.0, 1.0) : 0.0;
    const double ex = a.x + t * dx - p.x;
    const double ey = a.y + t * dy - p.y;
    return ex * ex + ey * ey;
}

/// Paints the pixels whose centres are nearer than half the width to the straight piece from `a` to
/// `b`.
void PaintPiece(Image8& image, Point a, Point b, double width, PF_Pixel colour) {
    const double radius = width / 2;
    const auto [top, bottom] =
        PixelRange(std::min(a.y, b.y) - radius, std::max(a.y, b.y) + radius, image.height);
    const auto [left, right] =
        PixelRange(std::min(a.x, b.x) - radius, std::max(a.x, b.x) + radius, image.width);
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            if (SquaredDistance({x + 0.5, y + 0.5}, a, b) < radius * radius)
                image.at(x, y) = colour;
        }
    }
}

/// The pen's width a share `t` of the way along, a parabola through its three widths.
double WidthAt(const Pen& pen, double t) {
    const double u = 1 - t;
    return pen.start * u * (u - t) + 4 * pen.middle * t * u + pen.end * t * (t - u);
}

}  // namespace

Painter Painter::placed(Point origin, double scale, double turns) const {
    const Point d = Direction(turns);
    const Placement inner{scale * d.x, -scale * d.y, scale * d.y, scale * d.x, origin};
    return {*image_, placement_.then(inner), penScale_};
}

Painter Painter::mirrored(double x) const {
    return {*image_, placement_.then({-1, 0, 0, 1, {2 * x, 0}}), penScale_};
}

void Painter::fill(const Nodes& nodes, PF_Pixel colour) const {
    VisitInside(Flatten(nodes, Ends::closed, placement_), *image_,
                [=](PF_Pixel& pixel) { pixel = colour; });
}

void Painter::tone(const Nodes& nodes, PF_Pixel from, PF_Pixel to) const {
    VisitInside(Flatten(nodes, Ends::closed, placement_), *image_, [=](PF_Pixel& pixel) {
        if (SameColour(pixel, from)) pixel = to;
    });
}

void Painter::shade(const Nodes& nodes, const Paint& paint) const {
    tone(nodes, paint.light, paint.shadow);
}

void Painter::pattern(const Nodes& nodes, const Paint& from, const Paint& to) const {
    tone(nodes, from.light, to.light);
    tone(nodes, from.shadow, to.shadow);
}

void Painter::ink(const Nodes& nodes, const Pen& pen) const {
    const std::vector<Point> line = Flatten(nodes, Ends::open, placement_);
    const auto pieces = static_cast<double>(line.size() - 1);
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const double width = WidthAt(pen, (static_cast<double>(i) + 0.5) / pieces) * penScale_;
        PaintPiece(*image_, line[i], line[i + 1], std::max(width, 1.0), pen.colour);
    }
}

void Painter::outline(const Nodes& nodes, const Pen& pen) const {
    const std::vector<Point> line = Flatten(nodes, Ends::closed, placement_);
    const double width = std::max(pen.middle * penScale_, 1.0);
    for (std::size_t i = 0; i < line.size(); ++i) {
        PaintPiece(*image_, line[i], line[(i + 1) % line.size()], width, pen.colour);
    }
}

void Painter::shape(const Nodes& nodes, PF_Pixel colour, const Pen& pen) const {
    fill(nodes, colour);
    outline(nodes, pen);
}
