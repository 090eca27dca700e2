// What differs between the pixel depths: thresholds, edge and key test, blend and tip average.
#pragma once

#include <cstdlib>
#include <type_traits>
#include <vector>

#include "tests/judge/judge.h"
#include "tests/judge/weights.h"

namespace judge {

/// A value of the controls' scale, 0..255, on the 16-bit and on the float scale.
constexpr std::int32_t Scale16(std::int32_t v) { return v * 32768 / 255; }
constexpr float ScaleFloat(std::int32_t v) { return static_cast<float>(v) / 255.0f; }
constexpr std::int32_t LowByte(std::int32_t v) { return v & 255; }

/// 8-bit and 16-bit pixels; the thresholds and the key colour are on the pixels' own scale.
template <typename Channel>
struct IntegerDepth : IntegerWeights {
    using P = Pixel<Channel>;

    std::int32_t threshold, keyRed, keyGreen, keyBlue, keyTolerance;

    IntegerDepth(const Values& v, std::int32_t (*scale)(std::int32_t))
        : threshold(scale(v.colorThreshold)),
          keyRed(scale(LowByte(v.keyRed))),
          keyGreen(scale(LowByte(v.keyGreen))),
          keyBlue(scale(LowByte(v.keyBlue))),
          keyTolerance(scale(v.keyThreshold)) {}

    bool formEdge(const P& p, const P& q) const {
        if (Identical(p, q) || (p.alpha == 0 && q.alpha == 0)) return false;
        const P a = p.alpha == 0 ? P{} : p;
        const P b = q.alpha == 0 ? P{} : q;
        const int distance = std::abs(a.alpha - b.alpha) + std::abs(a.red - b.red) +
                             std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
        return distance > threshold;
    }

    bool matchesKey(const P& p) const {
        return std::abs(p.red - keyRed) + std::abs(p.green - keyGreen) +
                   std::abs(p.blue - keyBlue) <=
               keyTolerance;
    }

    static void blend(P& dst, const P& src, Weight w) {
        const Weight rest = 65535 - w;
        if (dst.alpha == src.alpha) {
            mixColours(dst, src, w);
        } else if (src.alpha == 0) {
            dst.alpha = mix(0, w, dst.alpha, rest);
        } else if (dst.alpha == 0) {
            dst = src;
            dst.alpha = mix(src.alpha, w, 0, rest);
        } else {
            const auto dstShare = static_cast<float>(std::int64_t{rest} * dst.alpha);
            const auto srcShare = static_cast<float>(std::int64_t{src.alpha} * w);
            const float k = w == 0 ? 0.0f : 65535.0f / (dstShare / srcShare + 1.0f) + 0.5f;
            mixColours(dst, src, static_cast<Weight>(k));
            dst.alpha = mix(src.alpha, w, dst.alpha, rest);
        }
    }

  private:
    static Channel mix(std::int64_t s, std::int64_t share, std::int64_t d, std::int64_t rest) {
        return static_cast<Channel>((s * share + d * rest + 32768) >> 16);
    }
    static void mixColours(P& dst, const P& src, Weight share) {
        dst.red = mix(src.red, share, dst.red, 65535 - share);
        dst.green = mix(src.green, share, dst.green, 65535 - share);
        dst.blue = mix(src.blue, share, dst.blue, 65535 - share);
    }
};

/// Channels 0..255.
struct Depth8 : IntegerDepth<std::uint8_t> {
    explicit Depth8(const Values& v) : IntegerDepth(v, [](std::int32_t value) { return value; }) {}

    /// Averages an output pixel with its input neighbours inside the picture, given in the order
    /// left, right, up, down; so do the other depths.
    static void tipAverage(P& centre, const std::vector<P>& neighbours, Weight tipWeight) {
        std::int32_t sumW = 0, sumA = 0, sumR = 0, sumG = 0, sumB = 0;
        const auto add = [&](const P& p, Weight weight) {
            const std::int32_t k = (p.alpha * weight) >> 16;
            sumW += weight;
            sumA += p.alpha * weight;
            sumR += p.red * k;
            sumG += p.green * k;
            sumB += p.blue * k;
        };
        for (const P& p : neighbours) add(p, tipWeight);
        if (!(sumW > 0)) return;
        add(centre, 65535);
        centre.alpha = static_cast<std::uint8_t>(((sumW >> 1) + sumA) / sumW);
        const std::int32_t a = sumA >> 16;
        if (a == 0) return;
        centre.red = static_cast<std::uint8_t>((sumR + (a >> 1)) / a);
        centre.green = static_cast<std::uint8_t>((sumG + (a >> 1)) / a);
        centre.blue = static_cast<std::uint8_t>((sumB + (a >> 1)) / a);
    }
};

/// The sums of a tip average in single precision.
struct TipSums {
    float w = 0, a = 0, r = 0, g = 0, b = 0;

    template <typename P>
    void add(const P& p, float weight) {
        const float share = static_cast<float>(p.alpha) * weight;
        w += weight;
        a += share;
        r += static_cast<float>(p.red) * share;
        g += static_cast<float>(p.green) * share;
        b += static_cast<float>(p.blue) * share;
    }
};

/// Channels 0..32768.
struct Depth16 : IntegerDepth<std::uint16_t> {
    explicit Depth16(const Values& v) : IntegerDepth(v, Scale16) {}

    static void tipAverage(P& centre, const std::vector<P>& neighbours, Weight tipWeight) {
        TipSums s;
        for (const P& p : neighbours) s.add(p, static_cast<float>(tipWeight) / 65535.0f);
        if (!(s.w > 0)) return;
        s.add(centre, 1.0f);
        const auto store = [](float value) {
            return static_cast<std::uint16_t>(static_cast<std::int32_t>(value));
        };
        centre.alpha = store((s.w * 0.5f + s.a) / s.w);
        if (s.a == 0) return;
        centre.red = store((s.r + s.a * 0.5f) / s.a);
        centre.green = store((s.g + s.a * 0.5f) / s.a);
        centre.blue = store((s.b + s.a * 0.5f) / s.a);
    }
};

/// Full intensity 1.0, nothing clamped.
struct DepthFloat : FloatWeights {
    using P = PixelFloat;

    float threshold, keyRed, keyGreen, keyBlue, keyTolerance;

    explicit DepthFloat(const Values& v)
        : threshold(ScaleFloat(v.colorThreshold)),
          keyRed(ScaleFloat(LowByte(v.keyRed))),
          keyGreen(ScaleFloat(LowByte(v.keyGreen))),
          keyBlue(ScaleFloat(LowByte(v.keyBlue))),
          keyTolerance(ScaleFloat(v.keyThreshold)) {}

    bool formEdge(const P& p, const P& q) const {
        const bool pTransparent = p.alpha == 0.0f, qTransparent = q.alpha == 0.0f;
        if (Identical(p, q) || (pTransparent && qTransparent)) return false;
        if (pTransparent || qTransparent) {
            const P& other = pTransparent ? q : p;
            return threshold - (((other.green + other.red) + other.blue) + other.alpha) < 0.0f;
        }
        const float dr = difference(p.red, q.red), dg = difference(p.green, q.green);
        const float db = difference(p.blue, q.blue), da = difference(p.alpha, q.alpha);
        return (((threshold - dr) - dg) - db) - da < 0.0f;
    }

    bool matchesKey(const P& p) const {
        const float dr = difference(p.red, keyRed), dg = difference(p.green, keyGreen),
                    db = difference(p.blue, keyBlue);
        return !(((keyTolerance - dr) - dg) - db < 0.0f);
    }

    static void blend(P& dst, const P& src, Weight w) {
        if (dst.alpha == src.alpha) {
            mixColours(dst, src, w);
        } else if (src.alpha == 0.0f) {
            dst.alpha = (1.0f - w) * dst.alpha + src.alpha * w;
        } else {
            // Where the quotient would be 0 / 0 the destination takes the source's colour.
            const float d = (1.0f - w) * dst.alpha;
            const float s = src.alpha * w;
            mixColours(dst, src, d == 0.0f && s == 0.0f ? 1.0f : 1.0f / (d / s + 1.0f));
            dst.alpha = w * src.alpha + d;
        }
    }

    static void tipAverage(P& centre, const std::vector<P>& neighbours, Weight tipWeight) {
        TipSums s;
        for (const P& p : neighbours) s.add(p, tipWeight);
        if (!(s.w > 0)) return;
        s.add(centre, 1.0f);
        centre.alpha = s.a / s.w;
        if (s.a == 0) return;
        centre.red = s.r / s.a;
        centre.green = s.g / s.a;
        centre.blue = s.b / s.a;
    }

  private:
    static float difference(float p, float q) {
        const float d = p - q;
        return 0.0f > d ? -d : d;
    }
    static void mixColours(P& dst, const P& src, float share) {
        dst.red = share * src.red + (1.0f - share) * dst.red;
        dst.green = share * src.green + (1.0f - share) * dst.green;
        dst.blue = share * src.blue + (1.0f - share) * dst.blue;
    }
};

template <typename P>
using DepthOf =
    std::conditional_t<std::is_same_v<P, Pixel8>, Depth8,
                       std::conditional_t<std::is_same_v<P, Pixel16>, Depth16, DepthFloat>>;

}  // namespace judge
