// The frames that benchmarks and other tests start from: the same on every platform, and as full of
// edges as they say.
#include "samples/frames.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

struct Expected {
    FrameKind kind;
    std::uint32_t checksum;  ///< at 1920 x 1080
    const char* name;
    double leastEdges, mostEdges;
};

constexpr Expected frames[] = {{FrameKind::blank, 0x9CDE85C5, "blank", 0, 0},
                               {FrameKind::cel, 0x7A362F71, "cel", 0.02, 0.04},
                               {FrameKind::busy, 0xD3DC5A87, "busy", 0.3, 0.4},
                               {FrameKind::noise, 0xACFFBFC5, "noise", 0.9, 1},
                               {FrameKind::lines, 0xB3E90045, "lines", 0.1, 0.4},
                               {FrameKind::diagonals, 0x66015FC5, "diagonals", 0.1, 0.5}};

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
    for (const Expected& expected : frames) {
        EXPECT_EQ(Checksum(MakeFrame(expected.kind, 1920, 1080)), expected.checksum)
            << expected.name;
        for (const int lines : {1080, 2160}) {
            const double share = EdgeShare(MakeFrame(expected.kind, lines * 16 / 9, lines), 10);
            EXPECT_GE(share, expected.leastEdges) << expected.name << ' ' << lines;
            EXPECT_LE(share, expected.mostEdges) << expected.name << ' ' << lines;
        }
    }
}

}  // namespace
