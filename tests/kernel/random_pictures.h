// Random pictures of few colours, made of the shapes that edges are smoothed on.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/judge/judge.h"
#include "tests/kernel/dice.h"

/// A picture of palette indices, 0 to 3.
struct IndexPicture {
    int width;
    int height;
    std::vector<std::uint8_t> cells;

    IndexPicture(int w, int h);
    /// Positions outside read as 0 and are not written.
    [[nodiscard]] int get(int x, int y) const;
    void set(int x, int y, int index);
    void fill(int left, int top, int right, int bottom, int index);

  private:
    [[nodiscard]] std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
};

/// One of the kinds of shapes, mirrored and turned at random.
IndexPicture RandomShapes(int width, int height, Dice& dice);

/// Values over the ranges of the controls, favouring those where a rule changes.
judge::Values RandomValues(bool key, bool invert, Dice& dice);

/// Four colours that make edges, miss edges narrowly, are transparent, or match the key of these
/// values.
template <typename P>
std::vector<P> RandomPalette(const judge::Values& values, Dice& dice);

template <typename P>
judge::Picture<P> Paint(const IndexPicture& shapes, const std::vector<P>& palette) {
    judge::Picture<P> picture(shapes.width, shapes.height);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = palette[shapes.cells[i]];
    return picture;
}
