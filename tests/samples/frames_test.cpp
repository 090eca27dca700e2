// The frames that benchmarks and other tests start from: the same on every platform, and as full of
// edges as they say.
#include "samples/frames.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

const struct {
    FrameKind kind;
    std::uint32_t checksum;  ///< at 1920 x 1080
    double leastEdges, mostEdges;
} frames[] = {
    {FrameKind::blank, 0x9CDE85C5, 0, 0},     {FrameKind::cel, 0x7A362F71, 0.02, 0.04},
    {FrameKind::busy, 0xD3DC5A87, 0.3, 0.4},  {FrameKind::noise, 0xACFFBFC5, 0.9, 1},
    {FrameKind::lines, 0xB3E90045, 0.1, 0.4}, {FrameKind::diagonals, 0x66015FC5, 0.1, 0.5},
};

/// FNV-1a over the channels.
std::uint32_t Checksum(const Image8& frame) {
    std::uint32_t sum = 2166136261U;
    for (const PF_Pixel p : frame.pixels) {
        for (const std::uint32_t channel : {p.alpha, p.red, p.green, p.blue})
            sum = (sum ^ channel) * 16777619U;
    }
    return sum;
}

TEST(Frames, AreTheSameEverywhereAndHaveTheirShareOfEdges) {
    for (const auto& [kind, checksum, leastEdges, mostEdges] : frames) {
        EXPECT_EQ(Checksum(MakeFrame(kind, 1920, 1080)), checksum);
        for (const int lines : {1080, 2160}) {
            const double share = EdgeShare(MakeFrame(kind, lines * 16 / 9, lines), 10);
            EXPECT_TRUE(share >= leastEdges && share <= mostEdges) << share << " at " << lines;
        }
    }
}

}  // namespace
