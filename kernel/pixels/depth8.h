// The 8-bit depth.
#pragma once

#include <bit>

#include "kernel/effect_values.h"
#include "kernel/pixels/integer_pixels.h"
#include "kernel/pixels/tip_average.h"

class Depth8 : public IntegerDepth<Pixel8> {
  public:
    explicit Depth8(const EffectValues& values) : IntegerDepth(values.colorThreshold) {}

    using TipSums = FixedTipSums;
    [[nodiscard]] static std::int64_t tipShare(std::int32_t tipWeight) { return tipWeight; }

    /// Makes a pixel the average of those that were summed up, itself among them.
    static void setAverage(Pixel& centre, const TipSums& sums) noexcept {
        centre.alpha = roundedQuotient(sums.alpha, sums.weight);
        const std::int64_t alpha = sums.alpha >> 16;
        if (alpha == 0) return;
        centre.red = roundedQuotient(sums.red, alpha);
        centre.green = roundedQuotient(sums.green, alpha);
        centre.blue = roundedQuotient(sums.blue, alpha);
    }

    /// The colour key in 8-bit channels.
    class Key {
      public:
        explicit Key(const EffectValues& values)
            : key_{values.keyThreshold, LowByte(values.keyRed), LowByte(values.keyGreen),
                   LowByte(values.keyBlue)},
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
    // Of sums below 2^52: the quotient in double precision, which takes less time, then has the
    // same integer part.
    [[nodiscard]] static std::uint8_t roundedQuotient(std::int64_t sum,
                                                      std::int64_t divisor) noexcept {
        const auto dividend = static_cast<double>(sum + (divisor >> 1));
        return static_cast<std::uint8_t>(
            static_cast<std::int32_t>(dividend / static_cast<double>(divisor)));
    }
};
