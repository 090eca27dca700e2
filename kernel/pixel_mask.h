// One truth value for each of up to 64 neighbouring pixels of a row.
#pragma once

#include <bit>
#include <cstdint>

/// Bit i belongs to the i-th pixel. Patterns of the edge map are formulas over masks, so that the same
/// formula tests one pixel or a whole stretch of a row. Bits that stand for no pixel may hold anything.
struct PixelMask {
    std::uint64_t bits;

    [[nodiscard]] constexpr bool test(int pixel) const { return (bits >> pixel & 1U) != 0; }
    [[nodiscard]] constexpr bool any() const { return bits != 0; }

    friend constexpr PixelMask operator&(PixelMask a, PixelMask b) { return {a.bits & b.bits}; }
    friend constexpr PixelMask operator|(PixelMask a, PixelMask b) { return {a.bits | b.bits}; }
    friend constexpr PixelMask operator~(PixelMask a) { return {~a.bits}; }
};
