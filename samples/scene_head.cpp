// The girl's head.
#include "samples/palette.h"
#include "samples/scene.h"

namespace {

const Nodes face =
    "528,310 532,380 552,436 596,478 640,494 684,478 728,436 748,380 752,310 720,220 640,190 "
    "560,220"_nodes;
const Nodes fringe =
    "640,118 560,132 500,190 480,290 490,400 516,486^ 538,420 548,340 562,300^ 556,330 568,362^ "
    "588,330 606,290^ 610,330 634,366^ 644,330 650,284^ 664,330 688,356^ 690,320 694,286^ 708,330 "
    "728,360^ 726,330 720,300^ 736,350 744,420 764,488^ 790,400 800,290 780,190 720,132"_nodes;

void DrawEyeShape(const Painter& painter) {
    const Nodes eye = "548,384 558,360 586,350 612,358 620,384 610,414 586,424 560,414"_nodes;
    painter.fill(eye, white);
    painter.shade("540,384^ 560,366 590,360 624,372^ 620,340^ 545,340^"_nodes, white);
    const auto insideEye = [&](const Nodes& nodes, PF_Pixel colour) {
        for (const PF_Pixel under : {white.light, white.shadow, iris.light, iris.shadow})
            painter.tone(nodes, under, colour);
    };
    insideEye(Ellipse({587, 388}, 26, 35), ink);
    painter.tone(Ellipse({587, 388}, 23.5, 33), ink, iris);
    painter.shade("560,350^ 560,392^ 587,380 616,392^ 616,350^"_nodes, iris);
    painter.tone(Ellipse({587, 414}, 14, 9), iris, irisLight);
    for (const PF_Pixel under : {iris.light, iris.shadow})
        painter.tone(Ellipse({587, 386}, 10, 17), under, ink);
    painter.fill("538,392^ 550,362 584,343 614,350 628,374^ 612,362 586,356 562,366"_nodes, ink);
    painter.fill("546,370^ 532,364^ 554,356^"_nodes, ink);
    painter.fill("544,380^ 526,380^ 548,366^"_nodes, ink);
    painter.ink("560,420 586,427 608,418"_nodes, line);
    painter.ink("552,346 580,332 612,338"_nodes, {1, 1.6, 1, skinLine});
}

void DrawFaceLines(const Painter& painter) {
    painter.ink("644,424 650,434 642,438"_nodes, {1, 2.2, 1, skinLine});
    const Nodes lips = "606,450^ 640,456 674,450^ 664,472 640,480 616,472"_nodes;
    painter.fill(lips, mouth);
    painter.tone(Ellipse({640, 480}, 22, 12), mouth, tongue);
    painter.tone("608,446^ 640,461 672,446^"_nodes, mouth, white);
    painter.outline(lips, {2, 2, 2, ink});
    painter.ink("602,446 608,452"_nodes, line);
    painter.ink("678,446 672,452"_nodes, line);
    for (int i = 0; i < 3; ++i) {
        painter.ink({{572.0 + 11 * i, 434}, {564.0 + 11 * i, 450}}, {1.4, 2, 1.4, blush});
        painter.ink({{694.0 + 11 * i, 434}, {686.0 + 11 * i, 450}}, {1.4, 2, 1.4, blush});
    }
}

void DrawFace(const Painter& painter) {
    painter.shape(face, skin, {2.4, 2.4, 2.4, skinLine});
    painter.shade(Moved(fringe, {5, 18}), skin);
    painter.shade("760,300^ 736,380 712,440 660,492^ 700,500^ 770,420^"_nodes, skin);
    DrawFaceLines(painter);
    DrawEyeShape(painter);
    DrawEyeShape(painter.mirrored(640));
    for (const double x : {587.0, 693.0}) {
        painter.fill(Ellipse({x - 9, 372}, 8, 10), white);
        painter.fill(Ellipse({x + 10, 404}, 4, 5), white);
    }
}

void DrawFringe(const Painter& painter) {
    painter.shape(fringe, hair, outline);
    painter.shade("790,180^ 756,280 748,380 764,500^ 820,480^ 820,200^"_nodes, hair);
    painter.shade("520,300^ 508,390 516,500^ 560,480^ 560,310^"_nodes, hair);
    painter.tone(
        Straight("520,236 536,214 546,232 566,200 576,222 600,190 608,216 636,186 646,214 672,188 "
                 "684,216 708,196 718,224 744,212 756,244 738,236 726,256 706,232 690,252 668,226 "
                 "650,248 630,224 608,250 592,228 570,256 556,238 534,262"_nodes),
        hair, hairLight);
    const Nodes strands[] = {
        "620,124 540,190 524,300 522,400"_nodes, "628,122 580,190 562,298"_nodes,
        "632,122 604,200 606,288"_nodes,         "640,122 640,200 650,282"_nodes,
        "650,122 684,200 694,284"_nodes,         "656,122 710,190 720,298"_nodes,
        "662,122 744,190 760,300 766,400"_nodes, "626,124 560,180 536,270"_nodes,
        "658,124 724,180 744,262"_nodes,         "510,230 496,300 502,380"_nodes,
        "780,230 788,300 782,380"_nodes,         "590,250 582,300 576,340"_nodes,
        "630,250 626,300 630,340"_nodes,         "674,250 678,300 684,336"_nodes};
    for (const Nodes& strand : strands) painter.ink(strand, {1, 1.8, 1, hair.shadow});
}

void DrawBun(const Painter& painter) {
    painter.shape(Ellipse({574, 104}, 66, 58), hair, outline);
    painter.shade("590,60^ 616,100 590,160^ 660,160^ 650,60^"_nodes, hair);
    painter.tone("530,90^ 550,62 580,58^ 562,76 548,100^"_nodes, hair, hairLight);
    painter.ink("600,150 540,140 528,100 560,66 606,72 620,104 596,130 566,120 566,98"_nodes, line);
    painter.ink("586,158 520,130 514,96"_nodes, fineLine);
    painter.ink("630,84 636,110 620,140"_nodes, fineLine);
    painter.shape(Straight("500,46 506,40 660,150 654,158"_nodes), yellow, outline);
    painter.shape(Ellipse({498, 40}, 13, 13), red, outline);
    painter.fill(Ellipse({494, 36}, 3, 3), white);
}

void DrawHairFlower(const Painter& painter) {
    for (int i = 0; i < 5; ++i) {
        const Painter petal = painter.placed({0, 0}, 1, 0.2 * i + 0.03);
        petal.shape("0,0^ 18,-20 42,-18 48,-2^ 44,16 20,18"_nodes, pink, outline);
        petal.shade("0,0^ 20,2 46,8^ 40,24 18,24^"_nodes, pink);
        petal.ink("10,0 24,-2 36,-3"_nodes, {1, 1.2, 1, red.shadow});
    }
    painter.shape(Ellipse({0, 0}, 10, 10), yellow, outline);
    for (int i = 0; i < 3; ++i) {
        const double x = -8 + 14.0 * i;
        painter.ink({{x, 44}, {x + 2, 70}, {x + 1, 96.0 + 10 * i}}, {1.2, 1.6, 1.2, red});
        painter.shape(Ellipse({x + 1, 104.0 + 10 * i}, 6, 8), white, fineLine);
    }
}

}  // namespace

void DrawBackHair(const Painter& painter) {
    painter.shape(
        "640,120 540,140 486,220 474,330 482,430 498,520 508,572^ 532,540 544,520^ 552,560 "
        "574,590^ 592,560 604,530^ 676,530^ 690,560 704,588^ 728,556 736,520^ 750,546 774,570^ "
        "788,510 800,430 806,330 794,220 740,140"_nodes,
        hair.shadow, outline);
    for (const Painter& side : {painter, painter.mirrored(640)}) {
        for (int i = 0; i < 9; ++i) {
            const double x = 492 + 9.0 * i;
            side.ink({{x, 430}, {x + 4, 490}, {x + 12, 540.0 - 8 * (i % 3)}}, {1, 1.5, 1, ink});
        }
    }
}

void DrawHead(const Painter& painter) {
    DrawFace(painter);
    DrawBun(painter);
    DrawFringe(painter);
    for (const Painter& side : {painter, painter.mirrored(640)})
        side.ink("552,330 580,316 614,324"_nodes, {1, 3, 1, ink});
    painter.ink("664,118 684,96 720,92"_nodes, {1, 1.8, 1, ink});
    painter.ink("620,120 640,92 664,84"_nodes, {1, 1.8, 1, ink});
    DrawHairFlower(painter.placed({742, 176}, 1));
}
