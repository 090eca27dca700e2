#include "command/views/comparison.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace nevrel {
namespace {

// Enlarged, a spot is as large as the picture, unless that would show too little.
constexpr int leastWidth = 96, leastHeight = 64;

/// Sums over the rectangles that begin at the top left, so that the sum over any other is had from
/// four of them.
class SummedAreas {
  public:
    SummedAreas(const Canvas& before, const Canvas& after)
        : stride_(before.width() + 1),
          sums_(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(before.height() + 1)) {
        for (int y = 0; y < before.height(); ++y) {
            for (int x = 0; x < before.width(); ++x) {
                sum(x + 1, y + 1) = sum(x, y + 1) + sum(x + 1, y) - sum(x, y) +
                                    difference(before.at(x, y), after.at(x, y));
            }
        }
    }

    [[nodiscard]] long of(const Area& area) {
        const int right = area.x + area.width, bottom = area.y + area.height;
        return sum(right, bottom) - sum(area.x, bottom) - sum(right, area.y) + sum(area.x, area.y);
    }

  private:
    [[nodiscard]] static long difference(const Color& a, const Color& b) {
        return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
    }

    [[nodiscard]] long& sum(int x, int y) {
        return sums_[static_cast<std::size_t>(y) * static_cast<std::size_t>(stride_) +
                     static_cast<std::size_t>(x)];
    }

    int stride_;
    std::vector<long> sums_;
};

}  // namespace

Area SpotAround(int x, int y, const Canvas& picture) {
    const int width = std::min(std::max(picture.width() / spotScale, leastWidth), picture.width());
    const int height =
        std::min(std::max(picture.height() / spotScale, leastHeight), picture.height());
    return {std::clamp(x - width / 2, 0, picture.width() - width),
            std::clamp(y - height / 2, 0, picture.height() - height), width, height};
}

Area BusiestSpot(const Canvas& before, const Canvas& after) {
    constexpr int step = 8;
    SummedAreas differences(before, after);
    Area busiest = SpotAround(before.width() / 2, before.height() / 2, before);
    long most = differences.of(busiest);
    for (int y = 0; y + busiest.height <= before.height(); y += step) {
        for (int x = 0; x + busiest.width <= before.width(); x += step) {
            const Area area{x, y, busiest.width, busiest.height};
            const long sum = differences.of(area);
            if (sum <= most) continue;
            most = sum;
            busiest = area;
        }
    }
    return busiest;
}

Canvas DrawComparison(const Canvas& before, const Canvas& after, const Area& spot) {
    constexpr Color paper{40, 40, 40}, frame{255, 0, 160};
    constexpr int gap = 8;
    const int column = std::max(before.width(), spot.width * spotScale);
    const int below = before.height() + 2 * gap;
    Canvas canvas(2 * column + 3 * gap, below + spot.height * spotScale + gap, paper);
    int x = gap;
    for (const Canvas* picture : {&before, &after}) {
        canvas.draw(*picture, {0, 0, picture->width(), picture->height()}, x, gap);
        canvas.outline({x + spot.x, gap + spot.y, spot.width, spot.height}, frame);
        canvas.draw(*picture, spot, x, below, spotScale);
        x += column + gap;
    }
    return canvas;
}

}  // namespace nevrel
