// The float depth: 1.0 is full intensity, nothing is clamped, all arithmetic is single precision as
// written.
#pragma once

#include <cmath>

#include "kernel/effect_values.h"
#include "kernel/pixels/color_key.h"
#include "kernel/pixels/pixel.h"
#include "kernel/pixels/tip_average.h"
#include "kernel/pixels/weights.h"

class DepthFloat {
  public:
    using Pixel = PixelFloat;
    using Weights = FloatWeights;

    explicit DepthFloat(const EffectValues& values)
        : edgeThreshold_(FromByteScale(values.colorThreshold)) {}

    /// In this depth's own range.
    [[nodiscard]] float edgeThreshold() const { return edgeThreshold_; }

    [[nodiscard]] bool isEdge(const Pixel& p, const Pixel& q) const noexcept {
        const bool clearP = p.alpha == 0.0F;
        const bool clearQ = q.alpha == 0.0F;
        if (clearP != clearQ) {
            const Pixel& other = clearP ? q : p;
            return edgeThreshold_ - (((other.green + other.red) + other.blue) + other.alpha) < 0.0F;
        }
        if (clearP || Identical(p, q)) return false;
        const float rest =
            (((edgeThreshold_ - std::fabs(p.red - q.red)) - std::fabs(p.green - q.green)) -
             std::fabs(p.blue - q.blue)) -
            std::fabs(p.alpha - q.alpha);
        return rest < 0.0F;
    }

    /// Blends src into dst by the weight w from 0 to 1.
    static void blend(Pixel& dst, const Pixel& src, float w) noexcept {
        if (dst.alpha == src.alpha) {
            mixColors(dst, src, w);
            return;
        }
        const float fromDst = (1.0F - w) * dst.alpha;
        if (src.alpha == 0.0F) {
            dst.alpha = fromDst + src.alpha * w;
            return;
        }
        // Where neither gives anything the destination takes the source's colour whole.
        const float fromSrc = src.alpha * w;
        const bool nothing = fromDst == 0.0F && fromSrc == 0.0F;
        mixColors(dst, src, nothing ? 1.0F : 1.0F / (fromDst / fromSrc + 1.0F));
        dst.alpha = w * src.alpha + fromDst;
    }

    using TipSums = FloatTipSums;
    [[nodiscard]] static float tipShare(float tipWeight) { return tipWeight; }

    /// Makes a pixel the average of those that were summed up, itself among them.
    static void setAverage(Pixel& centre, const TipSums& sums) noexcept {
        centre.alpha = sums.alpha / sums.weight;
        if (sums.alpha == 0.0F) return;
        centre.red = sums.red / sums.alpha;
        centre.green = sums.green / sums.alpha;
        centre.blue = sums.blue / sums.alpha;
    }

    /// The colour key in float channels.
    class Key {
      public:
        explicit Key(const EffectValues& values)
            : key_{FromByteScale(values.keyThreshold), FromByteScale(LowByte(values.keyRed)),
                   FromByteScale(LowByte(values.keyGreen)),
                   FromByteScale(LowByte(values.keyBlue))} {}

        [[nodiscard]] const FloatKey& color() const { return key_; }

        [[nodiscard]] bool matches(const Pixel& p) const noexcept {
            const float rest =
                ((key_.tolerance - std::fabs(p.red - key_.red)) - std::fabs(p.green - key_.green)) -
                std::fabs(p.blue - key_.blue);
            return !(rest < 0.0F);
        }

      private:
        FloatKey key_;
    };

  private:
    static void mixColors(Pixel& dst, const Pixel& src, float share) noexcept {
        const float rest = 1.0F - share;
        dst.red = share * src.red + rest * dst.red;
        dst.green = share * src.green + rest * dst.green;
        dst.blue = share * src.blue + rest * dst.blue;
    }

    [[nodiscard]] static float FromByteScale(std::int32_t v) noexcept {
        return static_cast<float>(v) / 255.0F;
    }

    float edgeThreshold_;
};
