// The 8-bit depth.
#pragma once

#include <bit>
#include <span>

#include "kernel/effect_values.h"
#include "kernel/pixels/integer_pixels.h"
#include "kernel/pixels/tip_average.h"

class Depth8 : public IntegerDepth<Pixel8> {
  public:
    explicit Depth8(const EffectValues& values) : IntegerDepth(values.colorThreshold) {}

    /// Replaces the centre by its average with its neighbours, weighted by alpha, in 16.16 fixed
    /// point.
    static void tipAverage(Pixel& centre, std::span<const Pixel> neighbours,
                           std::int32_t tipWeight) noexcept {
        FixedTipSums sums;
        for (const Pixel& neighbour : neighbours) sums.add(neighbour, tipWeight);
        if (sums.weight <= 0) return;
        sums.add(centre, Weights::one);
        centre.alpha = static_cast<std::uint8_t>(((sums.weight >> 1) + sums.alpha) / sums.weight);
        const std::int64_t alpha = sums.alpha >> 16;
        if (alpha == 0) return;
        centre.red = static_cast<std::uint8_t>((sums.red + (alpha >> 1)) / alpha);
        centre.green = static_cast<std::uint8_t>((sums.green + (alpha >> 1)) / alpha);
        centre.blue = static_cast<std::uint8_t>((sums.blue + (alpha >> 1)) / alpha);
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
};
