// The sums of a line tip's average with its neighbours, in which colours count by their alpha.
#pragma once

#include <cstdint>

#include "kernel/pixels/pixel.h"

/// In 16.16 fixed point, for the 8-bit depth.
struct FixedTipSums {
    std::int64_t weight = 0;  // 64 bits: a stored softness can make a tip weight of any size
    std::int64_t alpha = 0;
    std::int64_t red = 0;
    std::int64_t green = 0;
    std::int64_t blue = 0;

    void add(const Pixel8& p, std::int64_t w) noexcept {
        const std::int64_t share = (p.alpha * w) >> 16;
        weight += w;
        alpha += p.alpha * w;
        red += p.red * share;
        green += p.green * share;
        blue += p.blue * share;
    }
};

/// In single precision, for the others.
struct FloatTipSums {
    float weight = 0.0F;
    float alpha = 0.0F;
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;

    template <typename Pixel>
    void add(const Pixel& p, float w) noexcept {
        const float share = static_cast<float>(p.alpha) * w;
        weight += w;
        alpha += share;
        red += static_cast<float>(p.red) * share;
        green += static_cast<float>(p.green) * share;
        blue += static_cast<float>(p.blue) * share;
    }
};
