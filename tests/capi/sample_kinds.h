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

/// The finite half that is nearest to a value of single precision, of two the even one.
inline Bits NearestHalf(double value) {
    static const std::vector<double> sizes = [] {
        std::vector<double> all;
        for (Bits half = 0; half < 0x7c00; ++half) all.push_back(HalfValue(half));
        return all;
    }();
    const double size = std::min<double>(std::fabs(static_cast<float>(value)), sizes.back());
    auto half =
        static_cast<Bits>(std::lower_bound(sizes.begin(), sizes.end(), size) - sizes.begin());
    if (half > 0) {
        const double up = sizes[half] - size, down = size - sizes[half - 1];
        if (down < up || (down == up && half % 2 == 1)) --half;
    }
    return half | (std::signbit(value) ? 0x8000U : 0U);
}

template <int full>
double WholeValue(Bits bits) {
    return bits / double{full};
}
template <int full>
Bits NearestWhole(double value) {
    return static_cast<Bits>(std::lround(std::clamp(value, 0.0, 1.0) * full));
}

inline double FloatValue(Bits bits) { return std::bit_cast<float>(bits); }
inline Bits NearestFloat(double value) { return std::bit_cast<Bits>(static_cast<float>(value)); }

/// A type of samples: their values, 1 being full intensity, and the samples nearest to values.
struct SampleKind {
    nevrel_sample sample;
    nevrel_sample channel;  ///< what the channels are in which it is smoothed
    int bytes;
    double (*value)(Bits bits);
    Bits (*nearest)(double value);
};

inline constexpr SampleKind sampleKinds[] = {
    {NEVREL_UINT8, NEVREL_UINT8, 1, WholeValue<255>, NearestWhole<255>},
    {NEVREL_UINT16, NEVREL_UINT16_32768, 2, WholeValue<65535>, NearestWhole<65535>},
    {NEVREL_UINT16_32768, NEVREL_UINT16_32768, 2, WholeValue<32768>, NearestWhole<32768>},
    {NEVREL_HALF, NEVREL_FLOAT, 2, HalfValue, NearestHalf},
    {NEVREL_FLOAT, NEVREL_FLOAT, 4, FloatValue, NearestFloat},
};
