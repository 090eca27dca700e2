// The 8-bit depth.
#pragma once

#include <bit>
#include <span>

#include "kernel/integer_pixels.h"
#include "kernel/ramp.h"
#include "kernel/vector_forms.h"
#include "sdk/effect_api.h"

/// Blends src into dst by weight / 65535.
inline void BlendPixel8(PF_Pixel& dst, const PF_Pixel& src, std::int32_t weight) noexcept {
    BlendInteger(dst, src, weight);
}

class Depth8 {
  public:
    using Pixel = PF_Pixel;
    using Weights = IntegerWeights;

    explicit Depth8(const EffectValues& values) : edgeThreshold_(values.colorThreshold) {}

    /// In this depth's own range.
    [[nodiscard]] std::int32_t edgeThreshold() const { return edgeThreshold_; }

    static constexpr auto scanRow = &VectorForms::scanRow8;
    static constexpr auto markPixels = &VectorForms::markPixels8;

    [[nodiscard]] bool isEdge(const Pixel& p, const Pixel& q) const noexcept {
        return FormEdge(p, q, edgeThreshold_);
    }

    static void blend(Pixel& dst, const Pixel& src, std::int32_t weight) noexcept {
        BlendPixel8(dst, src, weight);
    }

    /// Replaces the centre by its average with its neighbours, weighted by alpha, in 16.16 fixed
    /// point.
    static void tipAverage(Pixel& centre, std::span<const Pixel> neighbours,
                           std::int32_t tipWeight) noexcept {
        Sums sums;
        for (const Pixel& neighbour : neighbours) sums.add(neighbour, tipWeight);
        if (sums.weight <= 0) return;
        sums.add(centre, Weights::one);
        centre.alpha = static_cast<A_u_char>(((sums.weight >> 1) + sums.alpha) / sums.weight);
        const std::int64_t alpha = sums.alpha >> 16;
        if (alpha == 0) return;
        centre.red = static_cast<A_u_char>((sums.red + (alpha >> 1)) / alpha);
        centre.green = static_cast<A_u_char>((sums.green + (alpha >> 1)) / alpha);
        centre.blue = static_cast<A_u_char>((sums.blue + (alpha >> 1)) / alpha);
    }

    /// The colour key in 8-bit channels.
    class Key {
      public:
        explicit Key(const EffectValues& values)
            : key_{LowByte(values.keyRed), LowByte(values.keyGreen), LowByte(values.keyBlue),
                   values.keyThreshold},
              exact_{0, LowByte(values.keyRed), LowByte(values.keyGreen), LowByte(values.keyBlue)} {
        }

        [[nodiscard]] const IntegerKey& color() const { return key_; }

        [[nodiscard]] bool matches(const Pixel& p) const noexcept {
            return key_.tolerance == 0 ? hasKeyColor(p) : KeyDistance(p, key_) <= key_.tolerance;
        }

      private:
        // One comparison of the three colour bytes together.
        [[nodiscard]] bool hasKeyColor(const Pixel& p) const noexcept {
            constexpr auto colorBytes = std::bit_cast<std::uint32_t>(Pixel{0, 255, 255, 255});
            return ((std::bit_cast<std::uint32_t>(p) ^ std::bit_cast<std::uint32_t>(exact_)) &
                    colorBytes) == 0;
        }

        IntegerKey key_;
        Pixel exact_;
    };

  private:
    struct Sums {
        std::int64_t weight = 0;  // 64 bits: a stored softness can make a tip weight of any size
        std::int64_t alpha = 0;
        std::int64_t red = 0;
        std::int64_t green = 0;
        std::int64_t blue = 0;

        void add(const Pixel& p, std::int64_t w) noexcept {
            const std::int64_t share = (p.alpha * w) >> 16;
            weight += w;
            alpha += p.alpha * w;
            red += p.red * share;
            green += p.green * share;
            blue += p.blue * share;
        }
    };

    std::int32_t edgeThreshold_;
};
