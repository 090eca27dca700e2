// The judge: a second form of the smoothing kernels, for tests only. It follows each rule to the
// letter, one pixel and one flag at a time, with every access checked, and shares no code with the
// kernels it is held against.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace judge {

/// The nine control values, within the ranges of the controls; a negative bias down to -100 is
/// allowed too.
struct Values {
    std::int32_t colorThreshold = 0, softness = 0, bias = 0;
    std::int32_t colorKeyEnable = 0, keyRed = 0, keyGreen = 0, keyBlue = 0, keyThreshold = 0,
                 keyInvert = 0;
};

/// Straight colour; full intensity is 255, 32768 or 1.0.
template <typename ChannelType>
struct Pixel {
    using Channel = ChannelType;
    Channel alpha, red, green, blue;
};
using Pixel8 = Pixel<std::uint8_t>;
using Pixel16 = Pixel<std::uint16_t>;
using PixelFloat = Pixel<float>;

/// Whether every byte is equal; unlike a comparison of floats it tells -0.0 from 0.0.
template <typename P>
bool Identical(const P& p, const P& q) {
    static_assert(sizeof(P) == 4 * sizeof(typename P::Channel));
    return std::memcmp(&p, &q, sizeof(P)) == 0;
}

/// Rows from top to bottom, without padding.
template <typename P>
struct Picture {
    int width;
    int height;
    std::vector<P> pixels;

    Picture(int w, int h)
        : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

    bool holds(int x, int y) const { return x >= 0 && x < width && y >= 0 && y < height; }
    /// Throws std::out_of_range outside the picture.
    P& at(int x, int y) { return pixels.at(index(x, y)); }
    const P& at(int x, int y) const { return pixels.at(index(x, y)); }

  private:
    std::size_t index(int x, int y) const {
        return holds(x, y) ? static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                 static_cast<std::size_t>(x)
                           : pixels.size();
    }
};

/// What the kernel for this pixel type and these values makes of the picture. `P` is Pixel8,
/// Pixel16 or PixelFloat.
template <typename P>
Picture<P> Render(const Values& values, const Picture<P>& input);

}  // namespace judge
