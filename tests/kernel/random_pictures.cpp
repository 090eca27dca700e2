#include "tests/kernel/random_pictures.h"

#include <algorithm>
#include <array>

namespace {

int RandomIndex(Dice& dice) { return dice.between(1, 3); }

/// Single pixels and blocks of 2 x 2 on a flat ground.
void Specks(IndexPicture& p, Dice& dice) {
    for (int n = p.width * p.height / dice.between(6, 30); n >= 0; --n) {
        const int x = dice.below(p.width), y = dice.below(p.height), size = dice.below(2);
        p.fill(x, y, x + size, y + size, RandomIndex(dice));
    }
}

/// The area below a wandering line: steps of random length and height, or of one length throughout.
void Stairs(IndexPicture& p, Dice& dice) {
    const int longest = dice.oneOf({1, 2, 3, 5, 9, 30});
    const int highest = dice.oneOf({1, 1, 2, 4});
    const int index = RandomIndex(dice);
    const int direction = dice.oneOf({-1, 0, 1});
    int top = dice.below(p.height);
    for (int x = 0; x < p.width;) {
        const int end = x + (dice.oneIn(3) ? longest : dice.between(1, longest));
        p.fill(x, top, end - 1, p.height - 1, index);
        top += (direction == 0 ? dice.oneOf({-1, 1}) : direction) * dice.between(1, highest);
        x = end;
    }
}

/// A line of one to three pixels at any slope, or an area bounded by it.
void Line(IndexPicture& p, Dice& dice) {
    const int across = dice.between(-9, 9), down = dice.between(1, 6);
    const int offset = dice.below(p.width), index = RandomIndex(dice);
    const int thickness = dice.oneOf({1, 1, 2, 3, 100});
    for (int y = 0; y < p.height; ++y) {
        const int x = offset + (across * y - (across < 0 ? down - 1 : 0)) / down;
        p.fill(x, y, x + std::max(thickness, std::abs(across) / down) - 1, y, index);
    }
}

/// Thin horizontal and vertical lines that end somewhere.
void ThinLines(IndexPicture& p, Dice& dice) {
    for (int n = dice.between(1, 6); n > 0; --n) {
        const int x = dice.below(p.width), y = dice.below(p.height);
        const int length = dice.oneIn(3) ? p.width + p.height : dice.between(1, 20);
        const bool across = dice.oneIn(2);
        p.fill(x, y, across ? x + length : x, across ? y : y + length, RandomIndex(dice));
    }
}

/// Rectangles with a few pixels added to and taken from their sides.
void NotchedRectangles(IndexPicture& p, Dice& dice) {
    for (int n = dice.between(1, 5); n > 0; --n) {
        const int left = dice.below(p.width), top = dice.below(p.height), index = RandomIndex(dice);
        const int right = left + dice.between(1, 12), bottom = top + dice.between(1, 9);
        p.fill(left, top, right, bottom, index);
        for (int k = dice.between(0, 8); k > 0; --k) {
            const bool onSide = dice.oneIn(2);
            const int x =
                onSide ? dice.oneOf({left - 1, left, right, right + 1}) : dice.between(left, right);
            const int y =
                onSide ? dice.between(top, bottom) : dice.oneOf({top - 1, top, bottom, bottom + 1});
            p.set(x, y, p.get(x, y) == index ? 0 : index);
        }
    }
}

void Disc(IndexPicture& p, Dice& dice) {
    const int centreX = dice.below(p.width), centreY = dice.below(p.height),
              index = RandomIndex(dice);
    const int outer = dice.between(2, 400),
              inner = dice.oneIn(2) ? 0 : outer * dice.between(5, 9) / 10;
    for (int y = 0; y < p.height; ++y)
        for (int x = 0; x < p.width; ++x) {
            const int d = (x - centreX) * (x - centreX) + (y - centreY) * (y - centreY);
            if (d <= outer && d >= inner) p.set(x, y, index);
        }
}

/// Often at a larger scale, so that runs of some pixels are common.
void Noise(IndexPicture& p, Dice& dice) {
    const bool fine = dice.oneIn(2);
    const int across = fine ? 1 : dice.between(1, 5), down = fine ? 1 : dice.between(1, 4),
              colours = dice.between(2, 4);
    for (int y = 0; y < p.height; y += down)
        for (int x = 0; x < p.width; x += across)
            p.fill(x, y, x + across - 1, y + down - 1, dice.below(colours));
}

IndexPicture Transposed(const IndexPicture& p) {
    IndexPicture turned(p.height, p.width);
    for (int y = 0; y < p.height; ++y)
        for (int x = 0; x < p.width; ++x) turned.set(y, x, p.get(x, y));
    return turned;
}

void Mirror(IndexPicture& p, Dice& dice) {
    if (dice.oneIn(2)) std::reverse(p.cells.begin(), p.cells.end());
    if (dice.oneIn(2)) return;
    for (auto row = p.cells.begin(); row != p.cells.end(); row += p.width)
        std::reverse(row, row + p.width);
}

}  // namespace

IndexPicture::IndexPicture(int w, int h)
    : width(w), height(h), cells(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

int IndexPicture::get(int x, int y) const {
    return x >= 0 && x < width && y >= 0 && y < height ? cells[index(x, y)] : 0;
}

void IndexPicture::set(int x, int y, int value) {
    if (x >= 0 && x < width && y >= 0 && y < height)
        cells[index(x, y)] = static_cast<std::uint8_t>(value);
}

void IndexPicture::fill(int left, int top, int right, int bottom, int value) {
    for (int y = std::max(top, 0); y <= std::min(bottom, height - 1); ++y)
        for (int x = std::max(left, 0); x <= std::min(right, width - 1); ++x) set(x, y, value);
}

IndexPicture RandomShapes(int width, int height, Dice& dice) {
    using Draw = void (*)(IndexPicture&, Dice&);
    static constexpr std::array<Draw, 8> kinds = {
        Noise, Noise, Specks, Stairs, Line, ThinLines, NotchedRectangles, Disc};
    const bool turned = dice.oneIn(2);
    IndexPicture picture(turned ? height : width, turned ? width : height);
    for (int layers = dice.oneOf({1, 1, 2, 3}); layers > 0; --layers)
        kinds[static_cast<std::size_t>(dice.below(static_cast<int>(kinds.size())))](picture, dice);
    Mirror(picture, dice);
    return turned ? Transposed(picture) : picture;
}

judge::Values RandomValues(bool key, bool invert, Dice& dice) {
    judge::Values v;
    v.colorThreshold = dice.oneIn(3) ? dice.below(256) : dice.oneOf({0, 1, 10, 30, 255});
    v.softness = dice.oneIn(3) ? dice.between(0, 100) : dice.oneOf({0, 1, 30, 69, 70, 100, 100});
    v.bias = dice.oneIn(2)   ? 0
             : dice.oneIn(3) ? dice.oneOf({-100, -50, 1, 2, 50, 100})
                             : dice.between(-100, 100);
    v.colorKeyEnable = key;
    v.keyInvert = invert;
    v.keyRed = dice.below(256) + 256 * dice.between(-1, 1);  // the low byte counts
    v.keyGreen = dice.below(256);
    v.keyBlue = dice.below(256);
    v.keyThreshold = dice.oneIn(2) ? 0 : dice.oneIn(2) ? dice.below(256) : dice.oneOf({1, 10, 255});
    return v;
}

namespace {

using Colour = std::array<int, 4>;  // alpha, red, green, blue on the 8-bit scale

Colour RandomColour(Dice& dice) {
    Colour c = {dice.oneIn(2) ? 255 : dice.oneIn(2) ? 0 : dice.below(256), 0, 0, 0};
    for (std::size_t i = 1; i < 4; ++i)
        c[i] = dice.oneIn(3) ? dice.oneOf({0, 255}) : dice.below(256);
    return c;
}

/// `base` moved by about `amount` in one channel.
Colour Near(Colour base, int amount, Dice& dice) {
    const auto channel = static_cast<std::size_t>(dice.below(4));
    const int moved =
        base[channel] + (base[channel] + amount > 255 ? -amount : amount) + dice.between(-1, 1);
    base[channel] = std::clamp(moved, 0, 255);
    return base;
}

template <typename P>
P ToPixel(const Colour& c, Dice& dice);

template <>
judge::Pixel8 ToPixel(const Colour& c, Dice&) {
    const auto byte = [](int v) { return static_cast<std::uint8_t>(v); };
    return {byte(c[0]), byte(c[1]), byte(c[2]), byte(c[3])};
}

/// Between the steps of the 8-bit scale at times, and at times above full intensity, which a host
/// should not send.
template <>
judge::Pixel16 ToPixel(const Colour& c, Dice& dice) {
    const int spread = dice.oneOf({0, 0, 60}), full = dice.oneIn(9) ? 65535 : 32768;
    const auto deep = [&](int v) {
        const int jittered = v * full / 255 + dice.between(-spread, spread);
        return static_cast<std::uint16_t>(v == 0 ? 0 : std::clamp(jittered, 0, full));
    };
    return {deep(c[0]), deep(c[1]), deep(c[2]), deep(c[3])};
}

/// Colours reach below 0 and above 1 at times; a transparent alpha may be -0.0.
template <>
judge::PixelFloat ToPixel(const Colour& c, Dice& dice) {
    const bool wide = dice.oneIn(4);
    const auto value = [&](int v) {
        const float exact = static_cast<float>(v) / 255.0f;
        return wide ? exact * 3.0f - 1.0f : exact;
    };
    const float alpha = static_cast<float>(c[0]) / 255.0f;
    return {c[0] == 0 && dice.oneIn(2) ? -0.0f : alpha, value(c[1]), value(c[2]), value(c[3])};
}

}  // namespace

template <typename P>
std::vector<P> RandomPalette(const judge::Values& values, Dice& dice) {
    const Colour key = {dice.oneIn(4) ? dice.below(256) : 255, values.keyRed & 255, values.keyGreen,
                        values.keyBlue};
    // In a chain, neighbours make no edge but the next but one does, so that edges come without
    // their usual company.
    const bool chain = dice.oneIn(5);
    std::vector<P> palette;
    Colour last = RandomColour(dice);
    for (int i = 0; i < 4; ++i) {
        if (chain)
            last[2] = std::min(255, i * (values.colorThreshold * 3 / 4 + 1));
        else if (dice.oneIn(3))
            last = Near(last, dice.oneIn(2) ? values.colorThreshold : values.colorThreshold * 2 / 3,
                        dice);
        else if (values.colorKeyEnable != 0 && dice.oneIn(2))
            last = dice.oneIn(2) ? key : Near(key, values.keyThreshold, dice);
        else if (i > 0)
            last = RandomColour(dice);
        palette.push_back(ToPixel<P>(last, dice));
    }
    return palette;
}

template std::vector<judge::Pixel8> RandomPalette(const judge::Values&, Dice&);
template std::vector<judge::Pixel16> RandomPalette(const judge::Values&, Dice&);
template std::vector<judge::PixelFloat> RandomPalette(const judge::Values&, Dice&);
