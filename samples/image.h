// A picture in memory, rows packed without padding.
#pragma once

#include <cstddef>
#include <vector>

#include "sdk/effect_world.h"

/// `height` rows of `width` pixels, top row first.
template <typename Pixel>
struct Image {
    Image(int columns, int rows, Pixel colour = {})
        : width(columns),
          height(rows),
          pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), colour) {}

    [[nodiscard]] Pixel& at(int x, int y) { return pixels[index(x, y)]; }
    [[nodiscard]] const Pixel& at(int x, int y) const { return pixels[index(x, y)]; }

    int width;
    int height;
    std::vector<Pixel> pixels;

  private:
    [[nodiscard]] std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
};

using Image8 = Image<PF_Pixel>;
using Image16 = Image<PF_Pixel16>;
using ImageFloat = Image<PF_PixelFloat>;

/// An opaque colour from its usual hexadecimal form, 0xRRGGBB.
constexpr PF_Pixel Colour(unsigned rgb) {
    return {255, static_cast<A_u_char>(rgb >> 16 & 255), static_cast<A_u_char>(rgb >> 8 & 255),
            static_cast<A_u_char>(rgb & 255)};
}

constexpr bool SameColour(PF_Pixel a, PF_Pixel b) {
    return a.alpha == b.alpha && a.red == b.red && a.green == b.green && a.blue == b.blue;
}
