// The girl's figure and what she holds.
#include "samples/chance.h"
#include "samples/palette.h"
#include "samples/scene.h"

namespace {

const Nodes torso =
    "598,536^ 540,562 500,600 510,700 530,790^ 750,790^ 770,700 780,600 740,562 682,536^"_nodes;
const Nodes skirt = "518,880^ 640,896 762,880^ 800,990 832,1100^ 446,1100^ 480,990"_nodes;
const Nodes leftSleeve =
    "532,564^ 462,604 396,656 346,668^ 334,712 340,800 372,900^ 440,908 506,880^ "
    "522,790 540,690"_nodes;
const Nodes rightSleeve =
    "748,564^ 830,606 905,612 962,578^ 1000,622 1004,640 990,780 952,898^ "
    "866,908 790,870^ 772,790 752,690"_nodes;

void DrawFlower(const Painter& painter, const Paint& petal) {
    for (int i = 0; i < 5; ++i) {
        const Point d = Direction(0.2 * i - 0.05);
        painter.pattern(Ellipse({19 * d.x, 19 * d.y}, 15, 15), cloth, petal);
    }
    painter.pattern(Ellipse({0, 0}, 16, 16), cloth, petal);
    for (int i = 0; i < 5; ++i) {
        const Point d = Direction(0.2 * i - 0.05);
        painter.pattern(Straight({{-3 * d.y, 3 * d.x}, {26 * d.x, 26 * d.y}, {3 * d.y, -3 * d.x}}),
                        petal, white);
    }
    for (const PF_Pixel under : {petal.light, petal.shadow, white.light, white.shadow})
        painter.tone(Ellipse({0, 0}, 6, 6), under, yellow);
}

void DrawPattern(const Painter& painter) {
    const Point pinks[] = {{560, 650}, {720, 720}, {412, 720},  {470, 830}, {880, 690},
                           {930, 840}, {560, 970}, {700, 1010}, {780, 640}};
    const Point yellows[] = {{390, 840},  {480, 660}, {840, 810}, {640, 1060},
                             {520, 1070}, {780, 960}, {955, 720}, {540, 750}};
    double turns = 0;
    for (const Point p : pinks) DrawFlower(painter.placed(p, 1.0, turns += 0.07), pink);
    for (const Point p : yellows) DrawFlower(painter.placed(p, 0.72, turns += 0.07), yellow);
    Chance chance(4);
    for (int i = 0; i < 60; ++i) {
        const Point p{350.0 + chance.roll(660), 590.0 + chance.roll(490)};
        painter.pattern(Ellipse(p, 4, 4), cloth, white);
    }
}

void DrawClothShadows(const Painter& painter) {
    painter.shade("700,540^ 730,640 716,800^ 800,800^ 800,540^"_nodes, cloth);
    painter.shade("500,876^ 640,912 780,876^ 790,920^ 640,940 490,912^"_nodes, cloth);
    painter.shade("690,930^ 676,1010 690,1100^ 850,1100^ 780,930^ 740,1010"_nodes, cloth);
    painter.shade("500,930^ 520,1010 500,1100^ 470,1100^ 490,1010"_nodes, cloth);
}

void DrawTorso(const Painter& painter) {
    painter.shape(skirt, cloth, outline);
    painter.shape(torso, cloth, outline);
    DrawClothShadows(painter);
    painter.ink("700,896 684,980 652,1090"_nodes, line);
    painter.ink("560,900 552,960 530,1040"_nodes, line);
    painter.ink("610,902 612,940 600,990"_nodes, fineLine);
    painter.ink("742,892 760,960 770,1030"_nodes, fineLine);
}

void DrawNeckAndCollar(const Painter& painter) {
    painter.shape("614,470^ 614,510 594,540^ 640,640^ 686,540^ 666,510 666,470^"_nodes, skin,
                  {2, 2, 2, skinLine});
    painter.shade("604,470^ 618,506 650,528 664,560 676,560^ 680,470^"_nodes, skin);
    painter.ink("622,556 634,566 640,580"_nodes, {1, 1.6, 1, skinLine});
    painter.ink("662,552 652,562 650,572"_nodes, {1, 1.6, 1, skinLine});
    painter.shape("590,532^ 602,526^ 628,590 664,650^ 640,690^ 606,610"_nodes, white, outline);
    painter.shape("692,532^ 676,526^ 650,596 566,768^ 600,784^ 676,640"_nodes, white, outline);
    painter.shade("700,540^ 660,640 584,790^ 620,790^ 700,620^"_nodes, white);
    painter.ink("684,530 662,610 622,690 580,774"_nodes, {1, 1.2, 1, grey});
}

void DrawSash(const Painter& painter) {
    painter.shape("522,768^ 640,784 758,768^ 762,830 766,888^ 640,906 514,888^ 518,830"_nodes, sash,
                  outline);
    painter.shade("700,760^ 718,840 700,920^ 790,920^ 790,760^"_nodes, sash);
    painter.shade("500,790^ 640,806 780,790^ 780,764^ 500,764^"_nodes, sash);
    painter.ink("520,800 580,808 640,812"_nodes, fineLine);
    painter.ink("600,870 680,872 764,862"_nodes, fineLine);
    painter.ink("516,864 560,870 590,884"_nodes, fineLine);
    painter.shape("518,832^ 640,848 762,832^ 763,846^ 640,862 517,846^"_nodes, yellow, outline);
    for (int i = 0; i < 20; ++i) {
        const double x = 526 + 12 * i;
        const double y = 848 - 0.0011 * (x - 640) * (x - 640);
        painter.shade(Straight({{x, y - 6}, {x + 3, y - 6}, {x + 11, y + 20}, {x + 8, y + 20}}),
                      yellow);
    }
    painter.shape(Ellipse({640, 854}, 17, 15), green, outline);
    painter.shade(Ellipse({648, 862}, 16, 12), green);
    painter.fill(Ellipse({634, 848}, 4, 3), white);
}

void DrawArm(const Painter& painter, const Nodes& forearm) {
    painter.shape(forearm, skin, {2.2, 2.2, 2.2, skinLine});
}

void DrawHand(const Painter& painter) {
    const Pen skinPen{1.6, 2.2, 1.6, skinLine};
    painter.shape("-26,22 -34,-2 -26,-26 -2,-36 22,-28 32,-6 28,20 8,34 -12,34"_nodes, skin,
                  skinPen);
    painter.shade("8,-40^ 14,0 -10,40^ 40,40^ 40,-30^"_nodes, skin);
    for (int i = 0; i < 4; ++i) {
        const Nodes finger = "-36,0 -32,-7 -14,-8 4,-4 8,2 2,7 -16,7 -32,6"_nodes;
        painter.shape(Moved(finger, {0, -22 + 14.0 * i}), skin, skinPen);
    }
    painter.shape("28,-18 16,-34 -6,-44 -20,-42 -20,-33 -4,-30 10,-16 20,-4^"_nodes, skin, skinPen);
    painter.ink("-18,-40 -12,-41 -10,-36 -16,-35"_nodes, {1, 1.2, 1, skinLine});
}

}  // namespace

void DrawFoldingFan(const Painter& painter) {
    constexpr int pleats = 20;
    const auto at = [](double radius, double step) {
        const Point d = Direction(-0.40 + 0.40 * step / pleats);
        return Node{radius * d.x, radius * d.y};
    };
    for (int i = 0; i <= pleats; ++i) {
        const Nodes stick = {at(-26, i), at(100, i)};
        painter.ink(stick, {4.5, 4.5, 4.5, ink});
        painter.ink(stick, {2, 2, 2, woodLight});
    }
    for (int i = 0; i < pleats; ++i) {
        painter.fill(Straight({at(96, i), at(250, i), at(250, i + 1), at(96, i + 1)}),
                     i % 2 == 0 ? white : white.shadow);
    }
    const Node middle = at(176, 8);
    painter.pattern(Ellipse({middle.x, middle.y}, 58, 58), white, yellow);
    Nodes rim;
    for (int i = 0; i <= pleats; ++i) {
        rim.push_back(at(i % 2 == 0 ? 251 : 247, i));
        painter.ink({at(96, i), rim.back()}, fineLine);
    }
    painter.ink(Straight(rim), outline);
    for (const double radius : {96.0, 112.0, 236.0}) {
        Nodes arc;
        for (int i = 0; i <= pleats; ++i) arc.push_back(at(radius, i));
        painter.ink(arc, radius == 96 ? outline : Pen{1.4, 1.4, 1.4, yellow.shadow});
    }
    for (const int i : {0, pleats}) {
        const Nodes guard = {at(-28, i), at(252, i)};
        painter.ink(guard, {9, 12, 12, ink});
        painter.ink(guard, {5, 8, 8, wood});
    }
}

void DrawPinwheel(const Painter& painter) {
    painter.shape(Straight("-4,0 4,0 5,330 -3,330"_nodes), woodLight, outline);
    painter.tone(Straight("1,0 4,0 5,330 1,330"_nodes), woodLight, wood);
    const Paint paints[] = {sash, yellow, green, pink};
    for (int i = 0; i < 8; ++i) {
        const Painter blade = painter.placed({0, 0}, 1, i / 8.0 + 0.03);
        blade.shape("0,0^ 50,-8 104,2 118,30^ 86,62 60,60^ 40,30"_nodes, paints[i % 4].shadow,
                    outline);
        blade.shape("0,0^ 60,2 118,30^ 90,26 56,34 34,24"_nodes, paints[i % 4], outline);
        blade.ink("18,6 48,14 84,20"_nodes, fineLine);
    }
    painter.shape(Ellipse({0, 0}, 13, 13), white, outline);
    painter.shape(Ellipse({0, 0}, 5, 5), red, fineLine);
}

void DrawGirl(const Painter& painter) {
    DrawBackHair(painter);
    DrawTorso(painter);
    DrawNeckAndCollar(painter);
    DrawSash(painter);

    DrawPinwheel(painter.placed({262, 440}, 1, -0.03));
    DrawArm(painter, "420,690^ 370,680 322,636 300,610^ 332,590^ 366,620 420,646^"_nodes);
    painter.shade("420,700^ 368,690 310,630^ 322,620 370,660 420,672^"_nodes, skin);
    DrawFoldingFan(painter.placed({1030, 520}, 1));
    DrawArm(painter,
            "920,650^ 965,630 1000,590 1010,560^ 1044,566^ 1036,610 1000,660 930,720^"_nodes);
    painter.shade("930,690^ 990,650 1030,560^ 1060,560^ 1040,640 930,730^"_nodes, skin);
    painter.shape(leftSleeve, cloth, outline);
    painter.shape(rightSleeve, cloth, outline);
    painter.shade("360,668^ 356,740 392,920^ 420,920^ 388,780"_nodes, cloth);
    painter.shade("540,600^ 490,720 480,920^ 550,900^ 560,620^"_nodes, cloth);
    painter.shade("980,600^ 948,740 900,920^ 1010,920^ 1020,620^"_nodes, cloth);
    painter.shade("760,600^ 800,720 800,900^ 780,900^ 740,620^"_nodes, cloth);
    DrawPattern(painter);
    painter.ink("480,640 500,720 486,800"_nodes, line);
    painter.ink("420,680 440,760 430,840"_nodes, line);
    painter.ink("520,600 496,622 470,630"_nodes, line);
    painter.ink("850,640 836,720 850,820"_nodes, line);
    painter.ink("930,640 910,740 908,830"_nodes, line);
    painter.ink("770,590 800,622 830,634"_nodes, line);
    DrawHand(painter.placed({312, 596}, 1, -0.04).mirrored(0));
    DrawHand(painter.placed({1030, 548}, 1.0, 0.02));
    DrawHead(painter);
}
