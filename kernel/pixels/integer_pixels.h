// What 8-bit and 16-bit pixels have in common: the same arithmetic on channels of another width.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "kernel/pixels/arithmetic.h"
#include "kernel/pixels/color_key.h"
#include "kernel/pixels/pixel.h"
#include "kernel/pixels/weights.h"

/// Sum of the absolute differences of the four channels; a pixel with alpha 0 counts as all zero.
template <typename Pixel>
[[nodiscard]] std::int32_t ColorDistance(const Pixel& p, const Pixel& q) noexcept {
    const Pixel a = p.alpha == 0 ? Pixel{} : p;
    const Pixel b = q.alpha == 0 ? Pixel{} : q;
    return std::abs(a.alpha - b.alpha) + std::abs(a.red - b.red) + std::abs(a.green - b.green) +
           std::abs(a.blue - b.blue);
}

/// Whether two pixels differ by more than the threshold. Identical pixels and two transparent ones
/// never do.
template <typename Pixel>
[[nodiscard]] bool FormEdge(const Pixel& p, const Pixel& q, std::int32_t threshold) noexcept {
    const bool same = Identical(p, q) || (p.alpha == 0 && q.alpha == 0);
    return !same && ColorDistance(p, q) > threshold;
}

/// Sum of the absolute differences of the colour channels; alpha does not count.
template <typename Pixel>
[[nodiscard]] std::int32_t KeyDistance(const Pixel& p, const IntegerKey& key) noexcept {
    return std::abs(p.red - key.red) + std::abs(p.green - key.green) + std::abs(p.blue - key.blue);
}

/// Blends src into dst by the weight w of 65535; straight colour. The arithmetic is modulo 2^32:
/// sums reach 2^31 for 16-bit channels and anything for weights out of range.
template <typename Pixel>
void BlendInteger(Pixel& dst, const Pixel& src, std::int32_t weight) noexcept {
    using Channel = decltype(dst.alpha);
    const auto w = static_cast<std::uint32_t>(weight);
    const std::uint32_t rest = 65535U - w;
    const auto mix = [](std::uint32_t s, std::uint32_t shareS, std::uint32_t d,
                        std::uint32_t shareD) {
        return static_cast<Channel>((s * shareS + d * shareD + 32768U) >> 16);
    };
    const auto mixColors = [&](std::uint32_t share) {
        dst.red = mix(src.red, share, dst.red, 65535U - share);
        dst.green = mix(src.green, share, dst.green, 65535U - share);
        dst.blue = mix(src.blue, share, dst.blue, 65535U - share);
    };
    if (dst.alpha == src.alpha) {
        mixColors(w);
    } else if (src.alpha == 0) {
        dst.alpha = mix(0, w, dst.alpha, rest);
    } else if (dst.alpha == 0) {
        dst = src;
        dst.alpha = mix(src.alpha, w, 0, rest);
    } else {
        // The source's share of the resulting alpha; a weight of 0 makes the quotient infinite and
        // the share 0.
        const auto fromDst = static_cast<float>(rest * dst.alpha);
        const auto fromSrc = static_cast<float>(w * src.alpha);
        mixColors(static_cast<std::uint32_t>(
            TruncateToInt(65535.0F / (fromDst / fromSrc + 1.0F) + 0.5F)));
        dst.alpha = mix(src.alpha, w, dst.alpha, rest);
    }
}

/// What the 8-bit and the 16-bit depth share.
template <typename PixelType>
class IntegerDepth {
  public:
    using Pixel = PixelType;
    using Weights = IntegerWeights;

    /// In this depth's own range.
    [[nodiscard]] std::int32_t edgeThreshold() const { return edgeThreshold_; }

    [[nodiscard]] bool isEdge(const Pixel& p, const Pixel& q) const noexcept {
        return FormEdge(p, q, edgeThreshold_);
    }

    /// Blends src into dst by weight / 65535.
    static void blend(Pixel& dst, const Pixel& src, std::int32_t weight) noexcept {
        BlendInteger(dst, src, weight);
    }

  protected:
    explicit IntegerDepth(std::int32_t edgeThreshold) : edgeThreshold_(edgeThreshold) {}

  private:
    std::int32_t edgeThreshold_;
};
