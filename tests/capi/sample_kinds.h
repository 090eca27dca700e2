// What the sample types mean, written down apart from the library: values as doubles, the nearest
// sample by search or rounding.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "nevrel.h"

/// A sample as the bits that it is stored as.
using Bits = std::uint32_t;

inline double HalfValue(Bits half) {
    const int exponent = static_cast<int>(half >> 10 & 31);
    const int fraction = static_cast<int>(half & 1023);
    const double size =
        exponent == 0 ? std::ldexp(fraction, -24) : std::ldexp(1024 + fraction, exponent - 25);
    return (half & 0x8000) != 0 ? -size : size;
}

/// The finite half that is nearest to a finite value, of two the even one.
inline Bits NearestHalf(double value) {
    static const std::vector<double> sizes = [] {
        std::vector<double> all;
        for (Bits half = 0; half < 0x7c00; ++half) all.push_back(HalfValue(half));
        return all;
    }();
    const double size = std::min(std::fabs(value), sizes.back());
    auto half =
        static_cast<Bits>(std::lower_bound(sizes.begin(), sizes.end(), size) - sizes.begin());
    if (half > 0) {
        const double up = sizes[half] - size, down = size - sizes[half - 1];
        if (down < up || (down == up && half % 2 == 1)) --half;
    }
    return half | (std::signbit(value) ? 0x8000U : 0U);
}

/// A type of samples, and the nearest channels of the depth at which they are smoothed. Those of 16
/// bits that `fromByte` gives would not survive the way there and back.
struct SampleKind {
    nevrel_sample sample;
    int bytes;
    int depthBytes;  ///< of a channel of the depth: 1, 2 or 4
    Bits full;
    Bits (*fromByte)(int byte);
    Bits (*toChannel)(Bits sample);
    Bits (*toSample)(Bits channel);
};

inline Bits Same(Bits bits) { return bits; }
inline Bits Round(double value) { return static_cast<Bits>(std::lround(value)); }
inline Bits FloatBits(double value) { return std::bit_cast<Bits>(static_cast<float>(value)); }

inline constexpr SampleKind sampleKinds[] = {
    {NEVREL_UINT8, 1, 1, 255, [](int b) { return static_cast<Bits>(b); }, Same, Same},
    {NEVREL_UINT16, 2, 2, 65535,
     [](int b) { return static_cast<Bits>(b * 256 + (b < 128 ? 1 : 0)); },
     [](Bits s) { return Round(s / 65535.0 * 32768); },
     [](Bits c) { return Round(std::min(c / 32768.0, 1.0) * 65535); }},
    {NEVREL_UINT16_32768, 2, 2, 32768, [](int b) { return static_cast<Bits>(b * 32768 / 255); },
     Same, Same},
    {NEVREL_HALF, 2, 4, 0x3c00, [](int b) { return NearestHalf(b / 255.0); },
     [](Bits s) { return FloatBits(HalfValue(s)); },
     [](Bits c) { return NearestHalf(std::bit_cast<float>(c)); }},
    {NEVREL_FLOAT, 4, 4, 0x3f800000, [](int b) { return FloatBits(b / 255.0); }, Same, Same},
};
