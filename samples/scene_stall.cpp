// The food stall on wheels, with what stands on it.
#include "samples/palette.h"
#include "samples/scene.h"

namespace {

constexpr Pen Band(double width, PF_Pixel colour) { return {width, width, width, colour}; }

void DrawPost(const Painter& painter, double x, double top, double bottom) {
    painter.shape(Straight({{x - 9, top}, {x + 9, top}, {x + 9, bottom}, {x - 9, bottom}}), wood,
                  outline);
    painter.fill(
        Straight({{x + 2, top + 1}, {x + 8, top + 1}, {x + 8, bottom - 1}, {x + 2, bottom - 1}}),
        wood.shadow);
}

void DrawAwning(const Painter& painter) {
    constexpr int stripes = 11;
    const auto top = [](double i) { return Node{1206 + 590 * i / stripes, 318}; };
    const auto bottom = [](double i) { return Node{1156 + 690 * i / stripes, 430}; };
    for (int i = 0; i < stripes; ++i) {
        const Paint& paint = i % 2 == 0 ? red : white;
        painter.shape(Straight({top(i), top(i + 1), bottom(i + 1), bottom(i)}), paint, outline);
        const Node left = bottom(i);
        const Node right = bottom(i + 1);
        const double middle = (left.x + right.x) / 2;
        painter.shape({{left.x, 430, corner},
                       {right.x, 430, corner},
                       {right.x - 4, 456},
                       {middle, 470},
                       {left.x + 4, 456}},
                      paint.shadow, outline);
    }
    painter.shade(Straight("1600,310 1820,310 1860,430 1690,430"_nodes), red);
    painter.shade(Straight("1600,310 1820,310 1860,430 1690,430"_nodes), white);
    painter.shape(Straight("1192,300 1810,300 1810,320 1192,320"_nodes), wood, outline);
}

void DrawSign(const Painter& painter) {
    painter.shape(Straight("1330,212 1672,196 1676,292 1334,300"_nodes), woodLight, outline);
    painter.outline(Straight("1340,221 1663,206 1667,284 1343,291"_nodes), Band(1.3, wood.shadow));
    for (int i = 0; i < 4; ++i) {
        DrawMarks(painter.placed({1358.0 + 76 * i, 226.0 - 3.6 * i}, 1, -0.006), {0, 0}, 60, 1,
                  {3, 5, 3, i % 2 == 0 ? red : ink}, 21U + static_cast<unsigned>(i));
    }
}

void DrawBody(const Painter& painter) {
    painter.shape(Straight("1206,660 1796,660 1796,880 1206,880"_nodes), wood, outline);
    painter.shade(Straight("1206,660 1796,660 1796,694 1206,694"_nodes), wood);
    painter.shade(Straight("1720,660 1796,660 1796,880 1760,880"_nodes), wood);
    for (int i = 1; i < 8; ++i)
        painter.ink({{1206 + 73.75 * i, 662}, {1206 + 73.75 * i, 878}}, fineLine);
    for (int i = 0; i < 8; ++i) {
        const double x = 1222 + 73.75 * i;
        painter.ink({{x, 700}, {x + 6, 740}, {x - 2, 790}, {x + 4, 840.0 + 3 * (i % 4)}},
                    {1, 1, 1, wood.shadow});
        painter.ink({{x + 36, 720.0 + 9 * (i % 3)}, {x + 28, 780}, {x + 38, 860}},
                    {1, 1, 1, wood.shadow});
        if (i % 2 == 0)
            painter.outline(Ellipse({x + 20, 760.0 + 14 * (i % 3)}, 5, 9), Band(1, wood.shadow));
    }
    painter.shape(Straight("1180,640 1822,640 1826,664 1176,664"_nodes), woodLight, outline);
    painter.shape(Straight("1190,876 1812,876 1812,900 1190,900"_nodes), wood.shadow, outline);
    painter.shape(Straight("1192,884 1110,800 1122,790 1212,876"_nodes), wood, outline);
    painter.shape(Straight("1760,900 1784,900 1780,1058 1764,1058"_nodes), wood, outline);
}

void DrawMenu(const Painter& painter) {
    painter.shape(Straight("1636,704 1776,698 1780,846 1640,852"_nodes), white, outline);
    painter.ink("1704,664 1664,703"_nodes, fineLine);
    painter.ink("1704,664 1750,699"_nodes, fineLine);
    for (int i = 0; i < 6; ++i) {
        DrawMarks(painter.placed({1752.0 - 21 * i, 712.0 + i}, 1, -0.006), {0, 0}, 16,
                  i % 2 == 0 ? 8 : 6, {1.2, 1.4, 1, i == 0 ? red : ink},
                  40U + static_cast<unsigned>(i));
    }
}

void DrawWheel(const Painter& painter) {
    for (int i = 0; i < 16; ++i) {
        const Painter spoke = painter.placed({0, 0}, 1, (i + 0.3) / 16);
        spoke.shape("30,-6^ 90,-9 146,-5^ 146,5^ 90,9 30,6^"_nodes, woodLight, outline);
        spoke.fill("34,1^ 142,1^ 142,3^ 90,6 34,4^"_nodes, wood.shadow);
    }
    const Nodes rim = Ellipse({0, 0}, 158, 158);
    painter.outline(rim, Band(41, ink));
    painter.outline(rim, Band(36, wood));
    painter.outline(Ellipse({-3, -4}, 149, 149), Band(9, woodLight));
    painter.outline(Ellipse({3, 4}, 170, 170), Band(7, wood.shadow));
    painter.outline(Ellipse({0, 0}, 180, 180), Band(9, iron.shadow));
    painter.outline(Ellipse({0, 0}, 176, 176), Band(1.6, ink));
    painter.outline(Ellipse({0, 0}, 185, 185), Band(2.4, ink));
    for (int i = 0; i < 8; ++i) {
        const Point d = Direction((i + 0.5) / 8 + 0.02);
        painter.ink({{139 * d.x, 139 * d.y}, {175 * d.x, 175 * d.y}}, fineLine);
        painter.shape(Ellipse({180 * d.x, 180 * d.y}, 3, 3), iron, fineLine);
    }
    painter.shape(Ellipse({0, 0}, 40, 40), wood, outline);
    painter.shade("10,-50^ 20,0 -16,50^ 60,50^ 60,-50^"_nodes, wood);
    painter.shape(Ellipse({0, 0}, 22, 22), iron, outline);
    painter.shade(Ellipse({6, 7}, 18, 18), iron);
    painter.shape(Ellipse({0, 0}, 8, 8), yellow, fineLine);
}

void DrawGoldfish(const Painter& painter) {
    painter.shape("28,-6^ 48,-20 56,-16^ 48,-2 58,14^ 44,14 28,4^"_nodes, sash, fineLine);
    painter.shape("-30,2 -14,-13 12,-12 32,-2^ 12,12 -14,14"_nodes, red, fineLine);
    painter.shade("-30,4^ 0,8 34,0^ 10,20^ -20,20^"_nodes, red);
    painter.fill(Ellipse({-18, -3}, 4.5, 4.5), white);
    painter.fill(Ellipse({-19, -3}, 2.2, 2.2), ink);
    painter.ink("-6,-10 -2,0 -6,11"_nodes, fineLine);
    painter.ink("36,-4 48,-12"_nodes, fineLine);
    painter.ink("36,2 48,8"_nodes, fineLine);
}

void DrawBowl(const Painter& painter) {
    painter.shape("-60,-88^ -92,-50 -92,-8 -52,30^ 52,30^ 92,-8 92,-50 60,-88^"_nodes, glass,
                  outline);
    painter.tone("-100,-50^ -50,-54 0,-48 50,-54 100,-50^ 100,40^ -100,40^"_nodes, glass, water);
    DrawGoldfish(painter.placed({-26, -16}, 0.95, 0.02));
    DrawGoldfish(painter.placed({34, 4}, 0.62, -0.03).mirrored(0));
    painter.ink("-92,-50 -50,-54 0,-48 50,-54 92,-50"_nodes, fineLine);
    painter.fill("-80,-40 -84,-18 -70,4 -74,-18"_nodes, white);
    for (const Point bubble : {Point{-58, -30}, Point{-50, -40}, Point{60, -24}})
        painter.outline(Ellipse(bubble, 4, 4), Band(1, ink));
    painter.shape("-68,-88 0,-80 68,-88 0,-96"_nodes, white, outline);
    painter.ink("-66,-86 0,-80 66,-86"_nodes, fineLine);
}

void DrawApple(const Painter& painter) {
    painter.shape(Straight("-3,-60 3,-60 3,0 -3,0"_nodes), woodLight, fineLine);
    painter.shape("0,-16 -26,-10 -32,16 -18,40 0,44 18,40 32,16 26,-10"_nodes, red, outline);
    painter.shade("14,-20^ 18,14 -12,50^ 40,50^ 40,-20^"_nodes, red);
    painter.fill("-20,-2 -24,12 -16,22 -14,8"_nodes, white);
}

void DrawCatHead(const Painter& painter) {
    painter.shape(
        "-52,0 -50,-30 -54,-72^ -24,-50 0,-52 24,-50 54,-72^ 50,-30 52,0 34,26 0,34 -34,26"_nodes,
        yellow, outline);
    painter.shade("20,-56^ 36,-10 20,40^ 70,40^ 70,-76^"_nodes, yellow);
    painter.fill("-48,-60^ -46,-40^ -34,-46^"_nodes, pink);
    painter.fill("48,-60^ 46,-40^ 34,-46^"_nodes, pink.shadow);
    painter.fill("-6,4^ 6,4^ 0,11^"_nodes, pink.shadow);
    for (const double x : {-12.0, 0.0, 12.0}) {
        painter.fill(Straight({{x - 3, -50}, {x + 3, -50}, {x, -30}}), yellow.shadow);
    }
    for (const Painter& side : {painter, painter.mirrored(0)}) {
        side.ink("14,-8 24,-16 34,-8"_nodes, boldLine);
        side.ink("30,6 56,-1 80,-5"_nodes, fineLine);
        side.ink("30,10 56,8 80,10"_nodes, fineLine);
        side.ink("30,14 56,17 80,25"_nodes, fineLine);
        side.ink("0,11 4,18 14,17"_nodes, fineLine);
    }
}

void DrawCat(const Painter& painter) {
    painter.shape("60,70 100,60 116,20 104,-20 112,-36 126,-24 136,24 112,78 64,92"_nodes, yellow,
                  outline);
    for (const double y : {-4.0, 16.0, 36.0}) painter.shade(Ellipse({126, y}, 16, 4), yellow);
    painter.shape("-30,-30 -52,30 -62,96^ 70,96^ 78,50 60,0 30,-30"_nodes, yellow, outline);
    painter.shade("30,-30^ 50,30 40,100^ 90,100^ 90,-30^"_nodes, yellow);
    painter.tone("-20,0 -30,50 0,90 26,50 14,0"_nodes, yellow, white);
    for (const double x : {-30.0, 16.0}) {
        const Painter paw = painter.placed({x, 0}, 1);
        paw.shape("-18,98^ -18,84 0,76 18,84 18,98^"_nodes, white, outline);
        paw.ink("-6,86 -6,97"_nodes, fineLine);
        paw.ink("6,86 6,97"_nodes, fineLine);
    }
    painter.ink("-8,40 -14,64 -12,82"_nodes, line);
    painter.ink("0,40 -2,64 -2,82"_nodes, fineLine);
    painter.shape("-40,-16^ 0,0 40,-16^ 38,-4^ 0,12 -38,-4^"_nodes, red, outline);
    painter.shape(Ellipse({0, 10}, 10, 10), yellow, outline);
    painter.ink("-10,10 10,10"_nodes, fineLine);
    DrawCatHead(painter.placed({-4, -48}, 1, -0.02));
}

void DrawBanner(const Painter& painter) {
    painter.shape(Straight("1858,180 1866,180 1866,1058 1858,1058"_nodes), iron, outline);
    painter.shape(Ellipse({1862, 176}, 9, 9), yellow, outline);
    painter.shape(
        "1858,204^ 1892,196 1912,206^ 1906,360 1916,520 1908,700^ 1880,692 1858,704^"_nodes, water,
        outline);
    painter.shape("1858,204^ 1810,214 1776,204^ 1784,250 1776,296^ 1820,306 1858,296^"_nodes, green,
                  outline);
    painter.shade("1858,204^ 1836,214 1846,260 1836,310^ 1858,300^"_nodes, green);
    DrawMarks(painter, {1792, 226}, 52, 1, {3, 5, 3, white}, 61);
    DrawMarks(painter, {1864, 230}, 42, 10, {2, 3, 2, cloth.shadow}, 66);
}

}  // namespace

void DrawStall(const Painter& painter) {
    DrawPost(painter, 1232, 420, 650);
    DrawPost(painter, 1770, 420, 650);
    for (int i = 0; i < 6; ++i) {
        const double x = 1300 + 82.0 * i;
        painter.ink({{x, 440}, {x + 2, 480}}, fineLine);
        const Painter strip = painter.placed({x, 480}, 1, i % 2 == 0 ? 0.008 : -0.01);
        strip.shape(Straight("-14,0 16,0 16,62 -14,62"_nodes), i % 3 == 0 ? yellow : white,
                    fineLine);
        DrawMarks(strip, {-8, 4}, 18, 3, {1.2, 1.6, 1.2, ink}, 80U + static_cast<unsigned>(i));
    }
    DrawAwning(painter);
    DrawSign(painter);
    DrawBody(painter);
    DrawMenu(painter);
    DrawBowl(painter.placed({1350, 608}, 1));
    for (int i = 0; i < 3; ++i)
        DrawApple(painter.placed({1474.0 + 60 * i, 596}, 0.86, 0.006 * (i - 1)));
    DrawCat(painter.placed({1684, 546}, 1));
    DrawWheel(painter.placed({1424, 872}, 1));
    DrawBanner(painter);
}
