// Every sample's way to the core and back, against the plain meaning of the sample types.
#include <gtest/gtest.h>

#include <limits>

#include "capi/samples.h"
#include "tests/capi/sample_kinds.h"

namespace {

TEST(Conversions, Of16BitsGiveTheNearestValue) {
    for (Bits v = 0; v <= 65535; ++v) {
        const auto value = static_cast<std::uint16_t>(v);
        EXPECT_EQ(Samples65535::toChannel(value), NearestWhole<32768>(v / 65535.0)) << v;
        EXPECT_EQ(Samples65535::toSample(value), NearestWhole<65535>(v / 32768.0)) << v;
    }
}

TEST(Conversions, ToFloatsKeepFiniteValuesFinite) {
    EXPECT_EQ(SamplesFloat::fromUnit(1e60), std::numeric_limits<float>::max());
    EXPECT_EQ(SamplesHalf::fromUnit(-1e60), NearestHalf(-65504));
}

TEST(Conversions, OfHalvesKeepEveryValue) {
    for (Bits half = 0; half <= 0xffff; ++half) {
        const bool isNan = (half & 0x7fff) > 0x7c00, isInfinite = (half & 0x7fff) == 0x7c00;
        const float value = FloatOfHalf(static_cast<std::uint16_t>(half));
        EXPECT_EQ(HalfOfFloat(value), isNan ? half | 0x200 : half);
        EXPECT_EQ(std::isnan(value), isNan) << half;
        EXPECT_EQ(std::isinf(value), isInfinite) << half;
        if (!isNan && !isInfinite) {
            EXPECT_EQ(static_cast<double>(value), HalfValue(half)) << half;
        }
    }
}

TEST(Conversions, ToHalvesRoundToTheNearest) {
    const auto expectNearest = [](float value) {
        for (const float v : {value, -value}) EXPECT_EQ(HalfOfFloat(v), NearestHalf(v)) << v;
    };
    for (Bits half = 0; half < 0x7bff; ++half) {
        const double between = (HalfValue(half) + HalfValue(half + 1)) / 2;
        const auto middle = static_cast<float>(between);
        expectNearest(middle);
        expectNearest(std::nextafter(middle, 0.0F));
        expectNearest(std::nextafter(middle, 1e9F));
    }
    for (const float large : {65504.0F, 65519.0F, 65520.0F, 1e9F, std::numeric_limits<float>::max(),
                              1e-30F, std::numeric_limits<float>::denorm_min()})
        expectNearest(large);
}

}  // namespace
