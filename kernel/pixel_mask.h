// Truth values for many pixels at once.
#pragma once

#include <cstdint>

/// Patterns of the edge map are formulas over masks with one bit a pixel, so that the same formula
/// tests one pixel or whole stretches of a row. This is the mask of up to 64 pixels; vector forms
/// have wider ones of their own. Bits that stand for no pixel may hold anything.
struct PixelMask {
    std::uint64_t bits;

    friend constexpr PixelMask operator&(PixelMask a, PixelMask b) { return {a.bits & b.bits}; }
    friend constexpr PixelMask operator|(PixelMask a, PixelMask b) { return {a.bits | b.bits}; }
    friend constexpr PixelMask operator~(PixelMask a) { return {~a.bits}; }
};
