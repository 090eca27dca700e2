// Blend weights: the share of the source in a blend.
#pragma once

#include <cstdint>

#include "kernel/pixels/arithmetic.h"

/// The weights of the 8-bit and 16-bit depths.
struct IntegerWeights {
    using Weight = std::int32_t;
    static constexpr Weight one = 65535;
    static constexpr Weight threeQuarters = 49151;
    static constexpr Weight half = 32767;
    static constexpr Weight third = 21844;
    static constexpr Weight sixth = 10922;

    /// What a ramp of half weight loses a pixel; the divisor is its length in pixels times its
    /// percentage.
    [[nodiscard]] static Weight step(std::int64_t divisor) {
        return static_cast<Weight>(3276700 / divisor);
    }

    [[nodiscard]] static Weight tipWeight(std::int32_t softness) {
        return SaturateToInt(std::int64_t{softness} * 32767 / 200);
    }
    [[nodiscard]] static Weight cornerWeight(std::int32_t softness) {
        if (softness >= 70) return 6553;
        const auto missing = static_cast<float>(70 - std::int64_t{softness});
        return TruncateToInt((1.0F - missing / 70.0F) * 6553.0F);
    }
};

/// The weights of the float depth.
struct FloatWeights {
    using Weight = float;
    static constexpr Weight one = 1.0F;
    static constexpr Weight threeQuarters = 0.75F;
    static constexpr Weight half = 0.5F;
    static constexpr Weight third = 1.0F / 3.0F;
    static constexpr Weight sixth = 1.0F / 6.0F;

    [[nodiscard]] static Weight step(std::int64_t divisor) {
        return 50.0F / static_cast<float>(divisor);
    }

    [[nodiscard]] static Weight tipWeight(std::int32_t softness) {
        return static_cast<float>(softness) * 0.5F / 200.0F;
    }
    [[nodiscard]] static Weight cornerWeight(std::int32_t softness) {
        constexpr float full = 0.5F / 5.0F;
        if (softness >= 70) return full;
        const auto missing = static_cast<float>(70 - std::int64_t{softness});
        return (1.0F - missing / 70.0F) * full;
    }
};
