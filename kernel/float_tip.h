// The sums of a line tip's average in single precision.
#pragma once

struct TipSums {
    float weight = 0.0F;
    float alpha = 0.0F;
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;

    /// Adds a pixel with weight w; its colours count by its alpha.
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
