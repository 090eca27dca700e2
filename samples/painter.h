// Drawing as a cel painter does: flat fills and ink lines, every pixel one of the paints, nothing
// in between.
#pragma once

#include "samples/curve.h"
#include "samples/image.h"

/// A paint and the one for its shadow; where a single colour is asked for, it is the first.
struct Paint {
    constexpr Paint(unsigned lightRgb, unsigned shadowRgb)
        : light(Colour(lightRgb)), shadow(Colour(shadowRgb)) {}
    constexpr operator PF_Pixel() const { return light; }

    PF_Pixel light, shadow;
};

/// An ink line: its widths at both ends and in the middle, in pixels of a 1080-line picture, and
/// its paint. No line gets thinner than one pixel.
struct Pen {
    double start, middle, end;
    PF_Pixel colour;
};

/// Draws on a picture; where and how large is up to its placement. Copies draw on the same picture.
class Painter {
  public:
    /// Lines are drawn `penScale` times as wide as their pens say.
    Painter(Image8& image, const Placement& placement, double penScale)
        : image_(&image), placement_(placement), penScale_(penScale) {}

    /// A painter whose drawing is moved to `origin`, enlarged and turned (clockwise, in turns).
    [[nodiscard]] Painter placed(Point origin, double scale, double turns = 0) const;
    /// A painter that draws the mirror image about the vertical line at `x`.
    [[nodiscard]] Painter mirrored(double x) const;

    /// Fills a closed curve.
    void fill(const Nodes& nodes, PF_Pixel colour) const;
    /// Repaints what has the colour `from` inside a closed curve.
    void tone(const Nodes& nodes, PF_Pixel from, PF_Pixel to) const;
    /// Puts what has the paint inside a closed curve into shadow.
    void shade(const Nodes& nodes, const Paint& paint) const;
    /// Repaints what has the paint `from` inside a closed curve, in light and in shadow.
    void pattern(const Nodes& nodes, const Paint& from, const Paint& to) const;
    /// Draws an open curve.
    void ink(const Nodes& nodes, const Pen& pen) const;
    /// Draws a closed curve; the line is as wide as the pen's middle.
    void outline(const Nodes& nodes, const Pen& pen) const;
    /// Fills and outlines.
    void shape(const Nodes& nodes, PF_Pixel colour, const Pen& pen) const;

  private:
    Image8* image_;
    Placement placement_;
    double penScale_;
};
