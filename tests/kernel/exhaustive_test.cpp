// The kernels' arithmetic against the judge's, over everything that can be counted.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "kernel/blend/ramp_state.h"
#include "kernel/forms.h"
#include "kernel/pixels/depth16.h"
#include "kernel/pixels/depth8.h"
#include "kernel/pixels/depth_float.h"
#include "tests/judge/depths.h"

namespace {

#ifdef NDEBUG
constexpr int stride = 1;
#else
constexpr int stride =
    7;  // the sanitizers' builds are slow; what they look for does not hide between values
#endif

template <typename Pixel, typename P>
Pixel ToHost(const P& p) {
    return {p.alpha, p.red, p.green, p.blue};
}

/// The kernel's blend of `src` into `dst` is the judge's.
template <typename KernelDepth, typename JudgeDepth>
bool SameBlend(const typename JudgeDepth::P& dst, const typename JudgeDepth::P& src,
               typename JudgeDepth::Weight weight) {
    using Pixel = typename KernelDepth::Pixel;
    auto blended = ToHost<Pixel>(dst);
    KernelDepth::blend(blended, ToHost<Pixel>(src), weight);
    typename JudgeDepth::P judged = dst;
    JudgeDepth::blend(judged, src, weight);
    return std::memcmp(&blended, &judged, sizeof blended) == 0;
}

/// Whether eight pixels are blended at once, where there is a form for that, each as it is alone
/// and with a weight of 0 as it was, or, where that can't be done, not at all.
template <typename KernelDepth, typename JudgeDepth>
bool SameAcross(const typename JudgeDepth::P& dst, const typename JudgeDepth::P& src,
                std::int32_t w, bool possible) {
    using Pixel = typename KernelDepth::Pixel;
    std::vector<Pixel> line(2 * acrossReach, ToHost<Pixel>(dst));
    const std::int32_t back[acrossReach] = {w, 0, 65535, 12345};
    const std::int32_t on[acrossReach] = {0, w, 32768, 65535};
    const auto source = ToHost<Pixel>(src);
    auto* at = reinterpret_cast<std::byte*>(&line[acrossReach - 1]);
    const auto blendAcross = FastestForms().of<Pixel>().blendAcross;
    if (blendAcross == nullptr) return true;
    const bool done = blendAcross(at, sizeof(Pixel), source, source, back, on);
    for (int i = 0; i < 2 * acrossReach; ++i) {
        const std::int32_t weight =
            i < acrossReach ? back[acrossReach - 1 - i] : on[i - acrossReach];
        typename JudgeDepth::P expected = dst;
        if (done && weight != 0) JudgeDepth::blend(expected, src, weight);
        const auto pixel = ToHost<Pixel>(expected);
        if (std::memcmp(&line[static_cast<std::size_t>(i)], &pixel, sizeof pixel) != 0)
            return false;
    }
    return done == possible;
}

/// The least weight at which source and target mix to `value` or beyond it, seen from the target.
int RoundingEdge(int source, int target, int value) {
    const std::int64_t gap = std::int64_t{value} * 65536 - 32768 - std::int64_t{target} * 65535;
    const std::int64_t slope = source - target;
    return static_cast<int>(slope > 0 ? (gap + slope - 1) / slope : (gap + 65536 + slope) / slope);
}

/// On the controls' scale, of which the key colour and both thresholds are taken to 16 bits.
TEST(Exhaustive, ScaleOf16Bits) {
    for (int v = -65536; v <= 65535; ++v) ASSERT_EQ(Scale16(v), judge::Scale16(v)) << v;
}

/// Around every key and threshold of one channel, which the others share.
TEST(Exhaustive, KeyOfEveryDistance) {
    for (int key = 0; key < 256; key += stride)
        for (int threshold = 0; threshold < 256; threshold += stride) {
            EffectValues values{};
            values.keyRed = values.keyGreen = values.keyBlue = key;
            values.keyThreshold = threshold;
            const Depth8::Key key8(values);
            for (int v = 0; v < 256; ++v) {
                const auto channel = static_cast<std::uint8_t>(v);
                const auto other = static_cast<std::uint8_t>(key);
                const bool matches = std::abs(v - key) <= threshold;
                ASSERT_EQ(key8.matches({255, channel, other, other}), matches)
                    << v << " of " << key;
                ASSERT_EQ(key8.matches({0, other, channel, other}), matches) << v << " of " << key;
            }
        }
}

TEST(Exhaustive, Blend8AtEveryRoundingEdgeOfEverySourceAndTarget) {
    for (int s = 0; s < 256; s += stride)
        for (int d = 0; d < 256; ++d) {
            std::vector<int> weights = {0, 1, 32767, 65534, 65535};
            for (int value = std::min(s, d); s != d && value <= std::max(s, d); ++value)
                for (const int near : {-1, 0, 1})
                    weights.push_back(RoundingEdge(s, d, value) + near);
            const auto source = static_cast<std::uint8_t>(s), target = static_cast<std::uint8_t>(d);
            for (const int w : weights) {
                if (w < 0 || w > 65535) continue;
                const bool same =
                    SameBlend<Depth8, judge::Depth8>({255, target, 0, 1}, {255, source, 255, 254},
                                                     w) &&
                    SameBlend<Depth8, judge::Depth8>({target, target, 0, 1},
                                                     {source, source, 255, 254}, w) &&
                    SameAcross<Depth8, judge::Depth8>({255, target, 0, 1}, {255, source, 255, 254},
                                                      w, true) &&
                    SameAcross<Depth8, judge::Depth8>({target, target, 0, 1},
                                                      {source, source, 255, 254}, w, s == d);
                ASSERT_TRUE(same) << "source " << s << ", target " << d << ", weight " << w;
            }
        }
}

TEST(Exhaustive, Blend8OfEveryPairOfAlphas) {
    for (int s = 0; s < 256; s += stride)
        for (int d = 0; d < 256; ++d)
            for (int w = 0; w < 65536; w += 251) {
                const auto source = static_cast<std::uint8_t>(s),
                           target = static_cast<std::uint8_t>(d);
                const bool same = SameBlend<Depth8, judge::Depth8>({target, 0, 255, 100},
                                                                   {source, 255, 0, 200}, w);
                ASSERT_TRUE(same) << "source alpha " << s << ", target alpha " << d << ", weight "
                                  << w;
            }
}

TEST(Exhaustive, Blend16AtEveryWeight) {
    constexpr std::uint16_t values[] = {0,     1,     2,     127,   129,   1285, 16383,
                                        16384, 16385, 20001, 32766, 32767, 32768};
    for (const std::uint16_t s : values)
        for (const std::uint16_t d : values)
            for (int w = 0; w < 65536; w += stride) {
                const bool same =
                    SameBlend<Depth16, judge::Depth16>({32768, d, 0, 1}, {32768, s, 32768, 32767},
                                                       w) &&
                    SameBlend<Depth16, judge::Depth16>({d, d, 32768, 1}, {s, s, 0, 32767}, w) &&
                    SameAcross<Depth16, judge::Depth16>({s, d, 65535, 1}, {s, s, 32768, 32767}, w,
                                                        false) &&
                    SameAcross<Depth16, judge::Depth16>({32768, d, 0, 1}, {32768, s, 32768, 32767},
                                                        w, true);
                ASSERT_TRUE(same) << "source " << s << ", target " << d << ", weight " << w;
            }
}

TEST(Exhaustive, WeightsOutOfRangeAreNotBlendedAtOnce) {
    for (const int w :
         {-1, -65536, 65536, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(
            (SameAcross<Depth8, judge::Depth8>({255, 9, 0, 1}, {255, 200, 255, 254}, w, false)))
            << w;
        EXPECT_TRUE(
            (SameAcross<Depth16, judge::Depth16>({9, 9, 0, 1}, {9, 200, 255, 254}, w, false)))
            << w;
    }
}

/// Nothing keeps such alphas out of a float picture.
TEST(Exhaustive, BlendFloatOfUnusualAlphas) {
    using Limits = std::numeric_limits<float>;
    constexpr float alphas[] = {0.0F,
                                -0.0F,
                                Limits::denorm_min(),
                                0.5F,
                                1.0F,
                                -1.0F,
                                3.0F,
                                Limits::infinity(),
                                Limits::quiet_NaN()};
    for (const float s : alphas)
        for (const float d : alphas)
            for (const float w : {0.0F, Limits::denorm_min(), 0.25F, 1.0F}) {
                PixelFloat blended{d, 0.25F, 0.5F, 2.0F};
                DepthFloat::blend(blended, {s, 1.0F, 0.0F, -1.0F}, w);
                judge::PixelFloat judged{d, 0.25F, 0.5F, 2.0F};
                judge::DepthFloat::blend(judged, {s, 1.0F, 0.0F, -1.0F}, w);
                const auto same = [](float a, float b) {
                    return a == b || (std::isnan(a) && std::isnan(b));
                };
                ASSERT_TRUE(same(blended.alpha, judged.alpha) && same(blended.red, judged.red) &&
                            same(blended.green, judged.green) && same(blended.blue, judged.blue))
                    << "source alpha " << s << ", target alpha " << d << ", weight " << w;
            }
}

/// Every weight of a ramp is the judge's, and both end in the same step.
template <typename KernelRamp, typename JudgeRamp>
bool SameRamp(KernelRamp kernel, JudgeRamp judged) {
    while (!judged.done) {
        if (kernel.done) return false;
        const auto expected = judged.next();
        const auto weight = RampWeight(kernel);
        if (std::memcmp(&weight, &expected, sizeof weight) != 0) return false;
    }
    return kernel.done;
}

template <typename KernelWeights, typename JudgeWeights>
void CompareRamps() {
    for (int bias = -100; bias <= 100; bias += stride) {
        for (int percent = -20; percent <= 143; ++percent)
            for (int n = 1; n <= 24; ++n)
                ASSERT_TRUE(SameRamp(BlendWeights<KernelWeights>(70, bias).runRamp(n, percent),
                                     judge::RampKinds<JudgeWeights>{70, bias}.run(n, percent)))
                    << "bias " << bias << ", factor " << percent << ", run " << n;
        for (int softness = 0; softness <= 100; ++softness) {
            const BlendWeights<KernelWeights> kernel(softness, bias);
            const judge::RampKinds<JudgeWeights> judged{softness, bias};
            for (int n = 2; n <= 24; ++n)
                ASSERT_TRUE(SameRamp(kernel.thinLineRamp(n - 1), judged.thinLine(n - 1)) &&
                            SameRamp(kernel.staircaseRamp(n), judged.staircase(n)) &&
                            SameRamp(kernel.restoringRamp(n), judged.staircaseRestore(n)))
                    << "bias " << bias << ", softness " << softness << ", length " << n;
        }
    }
}

TEST(Exhaustive, RampsOfEveryFactorSoftnessAndBias) {
    CompareRamps<IntegerWeights, judge::IntegerWeights>();
    CompareRamps<FloatWeights, judge::FloatWeights>();
}

TEST(Exhaustive, CornerAndTipWeightsOfEverySoftness) {
    for (int softness = 0; softness <= 100; ++softness) {
        const BlendWeights<IntegerWeights> integer(softness, 0);
        EXPECT_EQ(integer.cornerWeight, judge::IntegerWeights::corner(softness)) << softness;
        EXPECT_EQ(integer.tipWeight, judge::IntegerWeights::tip(softness)) << softness;
        const BlendWeights<FloatWeights> floating(softness, 0);
        EXPECT_EQ(floating.cornerWeight, judge::FloatWeights::corner(softness)) << softness;
        EXPECT_EQ(floating.tipWeight, judge::FloatWeights::tip(softness)) << softness;
    }
}

}  // namespace
