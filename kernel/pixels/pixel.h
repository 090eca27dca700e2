// Pixels as they lie in memory: alpha, red, green, blue; straight (not premultiplied) colour.
#pragma once

#include <cstdint>
#include <cstring>

struct Pixel8 {
    std::uint8_t alpha, red, green, blue;  ///< 0..255
};
struct Pixel16 {
    std::uint16_t alpha, red, green, blue;  ///< 0..32768
};
struct PixelFloat {
    float alpha, red, green, blue;  ///< 1 is full intensity; any value may occur
};
static_assert(sizeof(Pixel8) == 4 && sizeof(Pixel16) == 8 && sizeof(PixelFloat) == 16);

/// Whether all bytes of two pixels are equal. Of float pixels a NaN thus equals itself, and -0.0 is
/// not 0.0.
template <typename Pixel>
[[nodiscard]] bool Identical(const Pixel& p, const Pixel& q) noexcept {
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the bytes are what counts
    return std::memcmp(&p, &q, sizeof(Pixel)) == 0;
}
