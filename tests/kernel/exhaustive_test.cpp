// The blends of the integer depths against the judge's, over everything that can be counted.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <vector>

#include "kernel/forms.h"
#include "kernel/pixels/depth16.h"
#include "kernel/pixels/depth8.h"
#include "tests/judge/depths.h"

namespace {

#ifdef NDEBUG
constexpr int stride = 1;
#else
// The sanitizers' builds are slow; what they look for does not hide between values.
constexpr int stride = 7;
#endif

template <typename KernelDepth, typename JudgeDepth>
struct Blends {
    using P = typename JudgeDepth::P;
    using Pixel = typename KernelDepth::Pixel;

    static Pixel toHost(const P& p) { return {p.alpha, p.red, p.green, p.blue}; }
    static bool same(const Pixel& pixel, const P& p) {
        return std::memcmp(&pixel, &p, sizeof p) == 0;
    }

    /// The kernel's blend of `src` into `dst` is the judge's. Where there is a form for eight
    /// pixels at once, it blends each as it is alone, and with a weight of 0 not at all; or none of
    /// them where that is not `possible`.
    static bool agree(const P& dst, const P& src, std::int32_t w, bool possible) {
        if (w >= 0 && w <= 65535) {
            Pixel blended = toHost(dst);
            KernelDepth::blend(blended, toHost(src), w);
            if (!same(blended, judged(dst, src, w))) return false;
        }
        const auto blendAcross = FastestForms().of<Pixel>().blendAcross;
        if (blendAcross == nullptr) return true;
        std::vector<Pixel> line(2 * acrossReach, toHost(dst));
        const std::int32_t back[acrossReach] = {w, 0, 65535, 12345};
        const std::int32_t on[acrossReach] = {0, w, 32768, 65535};
        auto* at = reinterpret_cast<std::byte*>(&line[acrossReach - 1]);
        const bool done = blendAcross(at, sizeof(Pixel), toHost(src), toHost(src), back, on);
        for (std::size_t i = 0; i < acrossReach; ++i) {
            const auto expect = [&](const Pixel& pixel, std::int32_t weight) {
                return same(pixel, done && weight != 0 ? judged(dst, src, weight) : dst);
            };
            if (!expect(line[acrossReach - 1 - i], back[i])) return false;
            if (!expect(line[acrossReach + i], on[i])) return false;
        }
        return done == possible;
    }

  private:
    static P judged(P dst, const P& src, std::int32_t w) {
        JudgeDepth::blend(dst, src, w);
        return dst;
    }
};
using Blends8 = Blends<Depth8, judge::Depth8>;
using Blends16 = Blends<Depth16, judge::Depth16>;

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
                    Blends8::agree({255, target, 0, 1}, {255, source, 255, 254}, w, true) &&
                    Blends8::agree({target, target, 0, 1}, {source, source, 255, 254}, w, s == d);
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
                    Blends16::agree({32768, d, 0, 1}, {32768, s, 32768, 32767}, w, true) &&
                    Blends16::agree({d, d, 32768, 1}, {s, s, 0, 32767}, w, s == d) &&
                    Blends16::agree({s, d, 65535, 1}, {s, s, 32768, 32767}, w, false);
                ASSERT_TRUE(same) << "source " << s << ", target " << d << ", weight " << w;
            }
}

TEST(Exhaustive, WeightsOutOfRangeAreNotBlendedAtOnce) {
    for (const int w : {-1, -65536, 65536, INT_MIN, INT_MAX}) {
        EXPECT_TRUE(Blends8::agree({255, 9, 0, 1}, {255, 200, 255, 254}, w, false)) << w;
        EXPECT_TRUE(Blends16::agree({9, 9, 0, 1}, {9, 200, 255, 254}, w, false)) << w;
    }
}

}  // namespace
