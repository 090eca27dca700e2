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
        woodShadow);
}

void DrawAwning(const Painter& painter) {
    constexpr int stripes = 11;
    const auto top = [](double i) { return Point{1206 + 590 * i / stripes, 318}; };
    const auto bottom = [](double i) { return Point{1156 + 690 * i / stripes, 430}; };
    for (int i = 0; i < stripes; ++i) {
        const bool isRed = i % 2 == 0;
        painter.shape(Straight({top(i), top(i + 1), bottom(i + 1), bottom(i)}), isRed ? red : white,
                      outline);
        const Point left = bottom(i);
        const Point right = bottom(i + 1);
        const double middle = (left.x + right.x) / 2;
        painter.shape({{left.x, 430, corner},
                       {right.x, 430, corner},
                       {right.x - 4, 456},
                       {middle, 470},
                       {left.x + 4, 456}},
                      isRed ? redShadow : whiteShadow, outline);
    }
    painter.tone(Straight({{1600, 310}, {1820, 310}, {1860, 430}, {1690, 430}}), red, redShadow);
    painter.tone(Straight({{1600, 310}, {1820, 310}, {1860, 430}, {1690, 430}}), white,
                 whiteShadow);
    painter.shape(Straight({{1192, 300}, {1810, 300}, {1810, 320}, {1192, 320}}), wood, outline);
}

void DrawSign(const Painter& painter) {
    painter.shape(Straight({{1330, 212}, {1672, 196}, {1676, 292}, {1334, 300}}), woodLight,
                  outline);
    painter.outline(Straight({{1340, 221}, {1663, 206}, {1667, 284}, {1343, 291}}),
                    Band(1.3, woodShadow));
    for (int i = 0; i < 4; ++i) {
        DrawMarks(painter.placed({1358.0 + 76 * i, 226.0 - 3.6 * i}, 1, -0.006), {0, 0}, 60, 1,
                  {3, 5, 3, i % 2 == 0 ? red : ink}, 21U + static_cast<unsigned>(i));
    }
}

void DrawBody(const Painter& painter) {
    painter.shape(Straight({{1206, 660}, {1796, 660}, {1796, 880}, {1206, 880}}), wood, outline);
    painter.tone(Straight({{1206, 660}, {1796, 660}, {1796, 694}, {1206, 694}}), wood, woodShadow);
    painter.tone(Straight({{1720, 660}, {1796, 660}, {1796, 880}, {1760, 880}}), wood, woodShadow);
    for (int i = 1; i < 8; ++i)
        painter.ink({{1206 + 73.75 * i, 662}, {1206 + 73.75 * i, 878}}, fineLine);
    for (int i = 0; i < 8; ++i) {
        const double x = 1222 + 73.75 * i;
        painter.ink({{x, 700}, {x + 6, 740}, {x - 2, 790}, {x + 4, 840.0 + 3 * (i % 4)}},
                    {1, 1, 1, woodShadow});
        painter.ink({{x + 36, 720.0 + 9 * (i % 3)}, {x + 28, 780}, {x + 38, 860}},
                    {1, 1, 1, woodShadow});
        if (i % 2 == 0)
            painter.outline(Ellipse({x + 20, 760.0 + 14 * (i % 3)}, 5, 9), Band(1, woodShadow));
    }
    painter.shape(Straight({{1180, 640}, {1822, 640}, {1826, 664}, {1176, 664}}), woodLight,
                  outline);
    painter.shape(Straight({{1190, 876}, {1812, 876}, {1812, 900}, {1190, 900}}), woodShadow,
                  outline);
    painter.shape(Straight({{1192, 884}, {1110, 800}, {1122, 790}, {1212, 876}}), wood, outline);
    painter.shape(Straight({{1760, 900}, {1784, 900}, {1780, 1058}, {1764, 1058}}), wood, outline);
}

void DrawMenu(const Painter& painter) {
    painter.shape(Straight({{1636, 704}, {1776, 698}, {1780, 846}, {1640, 852}}), white, outline);
    painter.ink({{1704, 664}, {1664, 703}}, fineLine);
    painter.ink({{1704, 664}, {1750, 699}}, fineLine);
    for (int i = 0; i < 6; ++i) {
        DrawMarks(painter.placed({1752.0 - 21 * i, 712.0 + i}, 1, -0.006), {0, 0}, 16,
                  i % 2 == 0 ? 8 : 6, {1.2, 1.4, 1, i == 0 ? red : ink},
                  40U + static_cast<unsigned>(i));
    }
}

void DrawWheel(const Painter& painter) {
    const Nodes rim = Ellipse({0, 0}, 158, 158);
    for (int i = 0; i < 16; ++i) {
        const Painter spoke = painter.placed({0, 0}, 1, (i + 0.3) / 16);
        const Nodes bar = {{30, -6, corner}, {90, -9}, {146, -5, corner},
                           {146, 5, corner}, {90, 9},  {30, 6, corner}};
        spoke.shape(bar, woodLight, outline);
        spoke.fill({{34, 1, corner}, {142, 1, corner}, {142, 3, corner}, {90, 6}, {34, 4, corner}},
                   woodShadow);
    }
    painter.outline(rim, Band(41, ink));
    painter.outline(rim, Band(36, wood));
    painter.outline(Ellipse({-3, -4}, 149, 149), Band(9, woodLight));
    painter.outline(Ellipse({3, 4}, 170, 170), Band(7, woodShadow));
    painter.outline(Ellipse({0, 0}, 180, 180), Band(9, ironShadow));
    painter.outline(Ellipse({0, 0}, 176, 176), Band(1.6, ink));
    painter.outline(Ellipse({0, 0}, 185, 185), Band(2.4, ink));
    for (int i = 0; i < 8; ++i) {
        const Point d = Direction((i + 0.5) / 8 + 0.02);
        painter.ink({{139 * d.x, 139 * d.y}, {175 * d.x, 175 * d.y}}, fineLine);
        painter.shape(Ellipse({180 * d.x, 180 * d.y}, 3, 3), iron, fineLine);
    }
    painter.shape(Ellipse({0, 0}, 40, 40), wood, outline);
    painter.tone(
        {{10, -50, corner}, {20, 0}, {-16, 50, corner}, {60, 50, corner}, {60, -50, corner}}, wood,
        woodShadow);
    painter.shape(Ellipse({0, 0}, 22, 22), iron, outline);
    painter.tone(Ellipse({6, 7}, 18, 18), iron, ironShadow);
    painter.shape(Ellipse({0, 0}, 8, 8), yellow, fineLine);
}

void DrawGoldfish(const Painter& painter) {
    painter.shape({{28, -6, corner},
                   {48, -20},
                   {56, -16, corner},
                   {48, -2},
                   {58, 14, corner},
                   {44, 14},
                   {28, 4, corner}},
                  sash, fineLine);
    painter.shape({{-30, 2}, {-14, -13}, {12, -12}, {32, -2, corner}, {12, 12}, {-14, 14}}, red,
                  fineLine);
    painter.tone({{-30, 4, corner}, {0, 8}, {34, 0, corner}, {10, 20, corner}, {-20, 20, corner}},
                 red, redShadow);
    painter.fill(Ellipse({-18, -3}, 4.5, 4.5), white);
    painter.fill(Ellipse({-19, -3}, 2.2, 2.2), ink);
    painter.ink({{-6, -10}, {-2, 0}, {-6, 11}}, fineLine);
    painter.ink({{36, -4}, {48, -12}}, fineLine);
    painter.ink({{36, 2}, {48, 8}}, fineLine);
}

void DrawBowl(const Painter& painter) {
    const Nodes bowl = {{-60, -88, corner}, {-92, -50}, {-92, -8}, {-52, 30, corner},
                        {52, 30, corner},   {92, -8},   {92, -50}, {60, -88, corner}};
    painter.shape(bowl, glass, outline);
    painter.tone({{-100, -50, corner},
                  {-50, -54},
                  {0, -48},
                  {50, -54},
                  {100, -50, corner},
                  {100, 40, corner},
                  {-100, 40, corner}},
                 glass, water);
    DrawGoldfish(painter.placed({-26, -16}, 0.95, 0.02));
    DrawGoldfish(painter.placed({34, 4}, 0.62, -0.03).mirrored(0));
    painter.ink({{-92, -50}, {-50, -54}, {0, -48}, {50, -54}, {92, -50}}, fineLine);
    painter.fill({{-80, -40}, {-84, -18}, {-70, 4}, {-74, -18}}, white);
    for (const Point bubble : {Point{-58, -30}, Point{-50, -40}, Point{60, -24}})
        painter.outline(Ellipse(bubble, 4, 4), Band(1, ink));
    painter.shape({{-68, -88}, {0, -80}, {68, -88}, {0, -96}}, white, outline);
    painter.ink({{-66, -86}, {0, -80}, {66, -86}}, fineLine);
}

void DrawApple(const Painter& painter) {
    painter.shape(Straight({{-3, -60}, {3, -60}, {3, 0}, {-3, 0}}), woodLight, fineLine);
    painter.shape(
        {{0, -16}, {-26, -10}, {-32, 16}, {-18, 40}, {0, 44}, {18, 40}, {32, 16}, {26, -10}}, red,
        outline);
    painter.tone(
        {{14, -20, corner}, {18, 14}, {-12, 50, corner}, {40, 50, corner}, {40, -20, corner}}, red,
        redShadow);
    painter.fill({{-20, -2}, {-24, 12}, {-16, 22}, {-14, 8}}, white);
}

void DrawCatHead(const Painter& painter) {
    painter.shape({{-52, 0},
                   {-50, -30},
                   {-54, -72, corner},
                   {-24, -50},
                   {0, -52},
                   {24, -50},
                   {54, -72, corner},
                   {50, -30},
                   {52, 0},
                   {34, 26},
                   {0, 34},
                   {-34, 26}},
                  yellow, outline);
    painter.tone(
        {{20, -56, corner}, {36, -10}, {20, 40, corner}, {70, 40, corner}, {70, -76, corner}},
        yellow, yellowShadow);
    painter.fill({{-48, -60, corner}, {-46, -40, corner}, {-34, -46, corner}}, pink);
    painter.fill({{48, -60, corner}, {46, -40, corner}, {34, -46, corner}}, pinkShadow);
    for (const double x : {-12.0, 0.0, 12.0}) {
        painter.fill(Straight({{x - 3, -50}, {x + 3, -50}, {x, -30}}), yellowShadow);
    }
    for (const double side : {-1.0, 1.0}) {
        painter.ink({{side * 14, -8}, {side * 24, -16}, {side * 34, -8}}, boldLine);
        for (int i = -1; i <= 1; ++i) {
            painter.ink(
                {{side * 30, 10.0 + 4 * i}, {side * 56, 8.0 + 9 * i}, {side * 80, 10.0 + 15 * i}},
                fineLine);
        }
    }
    painter.fill({{-6, 4, corner}, {6, 4, corner}, {0, 11, corner}}, pinkShadow);
    painter.ink({{0, 11}, {-4, 18}, {-14, 17}}, fineLine);
    painter.ink({{0, 11}, {4, 18}, {14, 17}}, fineLine);
}

void DrawCat(const Painter& painter) {
    painter.shape({{60, 70},
                   {100, 60},
                   {116, 20},
                   {104, -20},
                   {112, -36},
                   {126, -24},
                   {136, 24},
                   {112, 78},
                   {64, 92}},
                  yellow, outline);
    for (const double y : {-4.0, 16.0, 36.0})
        painter.tone(Ellipse({126, y}, 16, 4), yellow, yellowShadow);
    painter.shape(
        {{-30, -30}, {-52, 30}, {-62, 96, corner}, {70, 96, corner}, {78, 50}, {60, 0}, {30, -30}},
        yellow, outline);
    painter.tone(
        {{30, -30, corner}, {50, 30}, {40, 100, corner}, {90, 100, corner}, {90, -30, corner}},
        yellow, yellowShadow);
    painter.tone({{-20, 0}, {-30, 50}, {0, 90}, {26, 50}, {14, 0}}, yellow, white);
    for (const double x : {-30.0, 16.0}) {
        painter.shape(
            {{x - 18, 98, corner}, {x - 18, 84}, {x, 76}, {x + 18, 84}, {x + 18, 98, corner}},
            white, outline);
        painter.ink({{x - 6, 86}, {x - 6, 97}}, fineLine);
        painter.ink({{x + 6, 86}, {x + 6, 97}}, fineLine);
    }
    painter.ink({{-8, 40}, {-14, 64}, {-12, 82}}, line);
    painter.ink({{0, 40}, {-2, 64}, {-2, 82}}, fineLine);
    painter.shape({{-40, -16, corner},
                   {0, 0},
                   {40, -16, corner},
                   {38, -4, corner},
                   {0, 12},
                   {-38, -4, corner}},
                  red, outline);
    painter.shape(Ellipse({0, 10}, 10, 10), yellow, outline);
    painter.ink({{-10, 10}, {10, 10}}, fineLine);
    DrawCatHead(painter.placed({-4, -48}, 1, -0.02));
}

void DrawBanner(const Painter& painter) {
    painter.shape(Straight({{1858, 180}, {1866, 180}, {1866, 1058}, {1858, 1058}}), iron, outline);
    painter.shape(Ellipse({1862, 176}, 9, 9), yellow, outline);
    painter.shape({{1858, 204, corner},
                   {1892, 196},
                   {1912, 206, corner},
                   {1906, 360},
                   {1916, 520},
                   {1908, 700, corner},
                   {1880, 692},
                   {1858, 704, corner}},
                  water, outline);
    painter.shape({{1858, 204, corner},
                   {1810, 214},
                   {1776, 204, corner},
                   {1784, 250},
                   {1776, 296, corner},
                   {1820, 306},
                   {1858, 296, corner}},
                  green, outline);
    painter.tone(
        {{1858, 204, corner}, {1836, 214}, {1846, 260}, {1836, 310, corner}, {1858, 300, corner}},
        green, greenShadow);
    DrawMarks(painter, {1792, 226}, 52, 1, {3, 5, 3, white}, 61);
    DrawMarks(painter, {1864, 230}, 42, 10, {2, 3, 2, clothShadow}, 66);
}

}  // namespace

void DrawStall(const Painter& painter) {
    DrawPost(painter, 1232, 420, 650);
    DrawPost(painter, 1770, 420, 650);
    for (int i = 0; i < 6; ++i) {
        const double x = 1300 + 82.0 * i;
        painter.ink({{x, 440}, {x + 2, 480}}, fineLine);
        const Painter strip = painter.placed({x, 480}, 1, i % 2 == 0 ? 0.008 : -0.01);
        strip.shape(Straight({{-14, 0}, {16, 0}, {16, 62}, {-14, 62}}), i % 3 == 0 ? yellow : white,
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
