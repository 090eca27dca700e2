// The sample cel: a girl with a folding fan and a pinwheel beside a food stall at a summer
// festival.
//
// All coordinates are those of a 1920 x 1080 picture.
#pragma once

#include "samples/painter.h"

/// The background of the cel, meant to be keyed out; nothing drawn on it has this colour.
inline constexpr PF_Pixel paper = Colour(0xFFFFFF);

/// The sample picture.
[[nodiscard]] Image8 SamplePicture();

/// Draws the girl alone, as large as she fits into the picture, and in its middle.
void DrawFigure(Image8& image);

void DrawLanterns(const Painter& painter);
void DrawStall(const Painter& painter);
void DrawGirl(const Painter& painter);

/// The girl's head, and what she holds.
void DrawBackHair(const Painter& painter);
void DrawHead(const Painter& painter);
void DrawFoldingFan(const Painter& painter);
void DrawPinwheel(const Painter& painter);

/// Writing that is none: `count` characters one below the other in a square of `size` each.
void DrawMarks(const Painter& painter, Point topLeft, double size, int count, const Pen& pen,
               unsigned seed);
