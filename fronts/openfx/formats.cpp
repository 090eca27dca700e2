#include "fronts/openfx/formats.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "capi/half.h"

namespace {

// Kinds of samples: values from and to the scale on which 1 is full intensity, to the nearest.

template <typename Integer, int full>
struct Whole {
    using Sample = Integer;
    static double toUnit(Sample sample) { return static_cast<double>(sample) / full; }
    static Sample fromUnit(double unit) {
        const double inside = unit > 0 ? std::min(unit, 1.0) : 0;  // 0 for what is no number
        return static_cast<Sample>(std::lround(inside * full));
    }
};

struct Float {
    using Sample = float;
    static double toUnit(Sample sample) { return sample; }
    static Sample fromUnit(double unit) {
        constexpr double most = std::numeric_limits<float>::max();
        return static_cast<float>(std::isfinite(unit) ? std::clamp(unit, -most, most) : unit);
    }
};

struct Half {
    using Sample = std::uint16_t;
    static double toUnit(Sample sample) { return FloatOfHalf(sample); }
    static Sample fromUnit(double unit) { return HalfOfFloat(Float::fromUnit(unit)); }
};

constexpr int channels = 4, colors = 3;
// Places of alpha and of the first colour in a clip's pixel and in a straight one.
constexpr int alpha = 3, straightAlpha = 0, straightColor = 1;

template <typename Kind, typename Straight>
void Divide(const std::byte* row, std::byte* straight, int width) {
    const auto* from = reinterpret_cast<const typename Kind::Sample*>(row);
    auto* to = reinterpret_cast<typename Straight::Sample*>(straight);
    for (int x = 0; x < width; ++x, from += channels, to += channels) {
        const double share = Kind::toUnit(from[alpha]);
        to[straightAlpha] = Straight::fromUnit(share);
        const bool isStraight = share == 0 || share == 1;
        for (int i = 0; i < colors; ++i) {
            if (std::is_same_v<Kind, Straight> && isStraight) {
                to[straightColor + i] = from[i];
            } else {
                const double color = Kind::toUnit(from[i]);
                to[straightColor + i] = Straight::fromUnit(isStraight ? color : color / share);
            }
        }
    }
}

bool SameBytes(const void* a, const void* b, std::size_t count) {
    return std::memcmp(a, b, count) == 0;
}

template <typename Kind, typename Straight>
void Multiply(const std::byte* input, const std::byte* before, const std::byte* after,
              std::byte* output, int width) {
    using Sample = typename Straight::Sample;
    const int pixelBytes = static_cast<int>(sizeof(typename Kind::Sample)) * channels;
    if (input != output) std::copy_n(input, std::ptrdiff_t{width} * pixelBytes, output);
    const auto* old = reinterpret_cast<const Sample*>(before);
    const auto* made = reinterpret_cast<const Sample*>(after);
    auto* to = reinterpret_cast<typename Kind::Sample*>(output);
    const auto same = [&](int i) { return SameBytes(old + i, made + i, sizeof(Sample)); };
    for (int x = 0; x < width; ++x, old += channels, made += channels, to += channels) {
        if (SameBytes(old, made, sizeof(Sample) * channels)) continue;
        const double share = Straight::toUnit(made[straightAlpha]);
        // Colour behind an alpha of 0 was not divided, and is not multiplied.
        const bool staysClear = share == 0 && Straight::toUnit(old[straightAlpha]) == 0;
        for (int i = 0; i < colors; ++i) {
            if (same(straightAlpha) && same(straightColor + i)) continue;
            const double color = Straight::toUnit(made[straightColor + i]);
            to[i] = Kind::fromUnit(staysClear ? color : color * share);
        }
        if (!same(straightAlpha)) to[alpha] = Kind::fromUnit(share);
    }
}

template <typename Kind, typename Straight>
constexpr Depth MakeDepth(const char* name, nevrel_sample sample, nevrel_sample straightSample) {
    return {name,
            sample,
            sizeof(typename Kind::Sample),
            straightSample,
            sizeof(typename Straight::Sample) * channels,
            Divide<Kind, Straight>,
            Multiply<Kind, Straight>};
}

using Byte = Whole<std::uint8_t, 255>;
using Short = Whole<std::uint16_t, 65535>;
using CoreShort = Whole<std::uint16_t, 32768>;

constexpr Components allComponents[] = {{"OfxImageComponentRGBA", NEVREL_RGBA, 4},
                                        {"OfxImageComponentRGB", NEVREL_RGB, 3}};
// Half comes last: older hosts do not know it.
constexpr Depth allDepths[] = {
    MakeDepth<Byte, Byte>("OfxBitDepthByte", NEVREL_UINT8, NEVREL_UINT8),
    MakeDepth<Short, CoreShort>("OfxBitDepthShort", NEVREL_UINT16, NEVREL_UINT16_32768),
    MakeDepth<Float, Float>("OfxBitDepthFloat", NEVREL_FLOAT, NEVREL_FLOAT),
    MakeDepth<Half, Float>("OfxBitDepthHalf", NEVREL_HALF, NEVREL_FLOAT)};

}  // namespace

constinit const std::span<const Components> componentKinds(allComponents);
constinit const std::span<const Depth> depths(allDepths);
