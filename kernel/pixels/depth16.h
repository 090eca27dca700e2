// The 16-bit depth: channels run from 0 to 32768.
#pragma once

#include "kernel/effect_values.h"
#include "kernel/pixels/integer_pixels.h"
#include "kernel/pixels/tip_average.h"

/// A value of the 8-bit scale in the 16-bit range, truncated: 255 becomes 32768.
[[nodiscard]] inline std::int32_t Scale16(std::int32_t v) noexcept {
    return SaturateToInt(std::int64_t{v} * 32768 / 255);
}

class Depth16 : public IntegerDepth<Pixel16> {
  public:
    explicit Depth16(const EffectValues& values) : IntegerDepth(Scale16(values.colorThreshold)) {}

    using TipSums = FloatTipSums;
    [[nodiscard]] static float tipShare(std::int32_t tipWeight) {
        return static_cast<float>(tipWeight) / 65535.0F;
    }

    /// Makes a pixel the average of those that were summed up, itself among them.
    static void setAverage(Pixel& centre, const TipSums& sums) noexcept {
        centre.alpha = toChannel((sums.weight * 0.5F + sums.alpha) / sums.weight);
        if (sums.alpha == 0.0F) return;
        const float rounding = sums.alpha * 0.5F;
        centre.red = toChannel((sums.red + rounding) / sums.alpha);
        centre.green = toChannel((sums.green + rounding) / sums.alpha);
        centre.blue = toChannel((sums.blue + rounding) / sums.alpha);
    }

    /// The colour key in 16-bit channels.
    class Key {
      public:
        explicit Key(const EffectValues& values)
            : key_{Scale16(values.keyThreshold), Scale16(LowByte(values.keyRed)),
                   Scale16(LowByte(values.keyGreen)), Scale16(LowByte(values.keyBlue))} {}

        [[nodiscard]] const IntegerKey& color() const { return key_; }

        [[nodiscard]] bool matches(const Pixel& p) const noexcept {
            return KeyDistance(p, key_) <= key_.tolerance;
        }

      private:
        IntegerKey key_;
    };

  private:
    [[nodiscard]] static std::uint16_t toChannel(float v) noexcept {
        return static_cast<std::uint16_t>(TruncateToInt(v));
    }
};
