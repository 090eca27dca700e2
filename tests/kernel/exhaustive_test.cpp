// The blends of the integer depths against the judge's, over everything that can be counted.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "kernel/forms.h"
#include "kernel/pixels/depth16.h"
#include "kernel/pixels/depth8.h"
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

}  // namespace
