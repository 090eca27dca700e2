#include "samples/scene.h"

#include <algorithm>

#include "samples/chance.h"
#include "samples/palette.h"

namespace {

/// A painter for the whole picture.
Painter Whole(Image8& image) {
    const double scale = std::min(image.width / 1920.0, image.height / 1080.0);
    // A hair off the pixel grid, so that no straight line runs exactly between two pixels.
    const Point origin{(image.width - 1920 * scale) / 2 + 0.0137,
                       (image.height - 1080 * scale) / 2 + 0.0071};
    return {image, {scale, 0, 0, scale, origin}, scale};
}

void DrawLantern(const Painter& painter, unsigned seed) {
    painter.ink("0,-110 0,-66"_nodes, outline);
    const Nodes body =
        "-34,-58^ -64,-28 -70,8 -58,42 -32,64^ 32,64^ 58,42 70,8 64,-28 34,-58^"_nodes;
    painter.shape(body, red, outline);
    painter.shade("30,-80 44,-20 40,30 10,90^ 90,90^ 90,-80^"_nodes, red);
    for (int i = -2; i <= 2; ++i) {
        const double y = 20.0 * i - 6;
        const double half = 69.5 - 0.0085 * (y - 8) * (y - 8);
        painter.ink({{-half, y}, {-half / 2, y + 7}, {half / 2, y + 7}, {half, y}},
                    {1, 1.2, 1, red.shadow});
    }
    DrawMarks(painter, {-24, -34}, 46, 2, {2.5, 4.5, 2.5, ink}, seed);
    for (const double y : {-70.0, 60.0}) {
        painter.shape(Straight({{-36, y}, {36, y}, {36, y + 14}, {-36, y + 14}}), iron.shadow,
                      outline);
    }
    painter.shape(Straight("-5,74 5,74 7,88 -7,88"_nodes), yellow, outline);
    for (int i = -2; i <= 2; ++i)
        painter.ink({{1.5 * i, 88}, {2.5 * i, 104}, {3.5 * i, 122}}, {1.4, 1.4, 1, yellow.shadow});
}

}  // namespace

void DrawMarks(const Painter& painter, Point topLeft, double size, int count, const Pen& pen,
               unsigned seed) {
    Chance chance(seed);
    for (int i = 0; i < count; ++i) {
        const double top = topLeft.y + i * size;
        const auto at = [&](int column, int row) {
            return Node{topLeft.x + size * (0.1 + 0.2 * column), top + size * (0.08 + 0.2 * row)};
        };
        painter.ink({at(0, chance.roll(2)), at(4, chance.roll(2))}, pen);
        painter.ink({at(1 + chance.roll(3), 0), at(1 + chance.roll(3), 4)}, pen);
        if (chance.roll(2) == 0) {
            painter.ink({at(2, 2), at(1, 3), at(0, 4)}, pen);
            painter.ink({at(2, 2), at(3, 3), at(4, 4)}, pen);
        } else {
            painter.ink({at(0, 2), at(0, 4)}, pen);
            painter.ink({at(0, 2), at(4, 2), at(4, 4)}, pen);
        }
        if (chance.roll(2) == 0) painter.ink({at(0, 3), at(4, 3)}, pen);
    }
}

void DrawLanterns(const Painter& painter) {
    painter.ink("-20,20 120,58 310,76 520,62 760,26 1000,58 1240,60 1460,20 1560,-20"_nodes,
                outline);
    painter.ink("-20,26 120,63 310,80 520,65 760,30 1000,62 1240,63 1460,23 1560,-15"_nodes,
                {1, 1.2, 1, wood.shadow});
    DrawLantern(painter.placed({96, 160}, 1, 0.01), 3);
    DrawLantern(painter.placed({318, 186}, 1, -0.012), 7);
    DrawLantern(painter.placed({1010, 152}, 0.86, 0.008), 12);
    DrawLantern(painter.placed({1240, 168}, 1, -0.006), 5);
}

Image8 SamplePicture() {
    Image8 image(1920, 1080, paper);
    const Painter painter = Whole(image);
    DrawLanterns(painter);
    DrawStall(painter);
    DrawGirl(painter);
    return image;
}

void DrawFigure(Image8& image) { DrawGirl(Whole(image).placed({352, 54}, 0.95)); }
