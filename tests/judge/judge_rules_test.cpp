// The judge against figures worked out by hand.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/judge/depths.h"
#include "tests/judge/judge.h"
#include "tests/judge/measures.h"

namespace judge {
namespace {

/// The measures of a picture drawn with characters; different characters form an edge.
Measures Draw(const std::vector<std::string>& rows) {
    const auto pixel = [&](int x, int y) {
        return rows.at(static_cast<std::size_t>(y)).at(static_cast<std::size_t>(x));
    };
    const auto differ = [&](int x1, int y1, int x2, int y2) {
        return pixel(x1, y1) != pixel(x2, y2);
    };
    return Measures(
        DetectEdges(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), differ));
}

Depth8 Eight(int colorThreshold) { return Depth8(Values{.colorThreshold = colorThreshold}); }

std::vector<int> Weights(Ramp<IntegerWeights> ramp) {
    std::vector<int> weights;
    while (!ramp.done) weights.push_back(ramp.next());
    return weights;
}

TEST(JudgeRules, RampsGiveTheWorkedWeights) {
    using Kinds = RampKinds<IntegerWeights>;
    using Expected = std::vector<int>;
    EXPECT_EQ(Weights(Kinds{100, 0}.run(1, 100)), (Expected{24576, 8193, 0}));
    EXPECT_EQ(Weights(Kinds{70, 0}.run(3, 70)), (Expected{26916, 15214, 3745}));
    EXPECT_EQ(Weights(Kinds{70, 50}.run(3, 70)), (Expected{22538, 9246, 1896}));
    EXPECT_EQ(Weights(Kinds{70, -50}.run(3, 70)), (Expected{29748, 21471, 6872}));
    EXPECT_EQ(Weights(Kinds{70, 0}.run(1, 50)), (Expected{16383}));
    EXPECT_EQ(Weights(Kinds{70, 0}.run(1, -20)), (Expected{327}));
    EXPECT_EQ(Weights(Kinds{70, 0}.thinLine(1)), (Expected{42130, 3745}));
    EXPECT_EQ(Weights(Kinds{70, 0}.thinLine(4)), (Expected{56173, 37449, 18725, 2341}));
    EXPECT_EQ(Weights(Kinds{30, 0}.thinLine(1)), (Expected{19661}));
    EXPECT_EQ(Weights(Kinds{70, 0}.staircase(3)), (Expected{14043, 1248}));
    Ramp<IntegerWeights> restoring = Kinds{70, 0}.staircaseRestore(3);
    EXPECT_EQ(restoring.next(), 24966);
    EXPECT_EQ(restoring.next(), 9363);
    EXPECT_EQ((Kinds{70, 100}.thinLine(1).bias), 33);
    EXPECT_FLOAT_EQ((RampKinds<FloatWeights>{30, 0}.thinLine(1).next()), 0.3f);
}

/// A blend with its target before and after.
template <typename Depth>
struct Blend {
    typename Depth::P dst, src;
    typename Depth::Weight weight;
    typename Depth::P expected;
};

template <typename Depth>
void ExpectBlends(std::initializer_list<Blend<Depth>> blends) {
    for (Blend<Depth> blend : blends) {
        Depth::blend(blend.dst, blend.src, blend.weight);
        EXPECT_TRUE(Identical(blend.dst, blend.expected)) << "weight " << blend.weight;
    }
}

TEST(JudgeRules, BlendsComeOutAsWorked) {
    ExpectBlends<Depth8>({{{255, 0, 0, 0}, {255, 255, 0, 0}, 32767, {255, 127, 0, 0}},
                          {{0, 1, 2, 3}, {255, 40, 50, 60}, 16384, {64, 40, 50, 60}},
                          {{255, 1, 2, 3}, {0, 40, 50, 60}, 65535, {0, 1, 2, 3}},
                          {{255, 1, 2, 3}, {0, 40, 50, 60}, 32767, {128, 1, 2, 3}}});
    ExpectBlends<Depth16>(
        {{{0, 1, 2, 3}, {32768, 40, 50, 60}, 32767, {16384, 40, 50, 60}},
         {{32768, 32768, 0, 0}, {32768, 0, 32768, 0}, 65535, {32768, 0, 32768, 0}}});
    ExpectBlends<DepthFloat>({{{1, 0, 0, 0}, {1, 2, 0, 0}, 0.5f, {1, 1, 0, 0}},
                              {{0, 0.5f, 0.5f, 0.5f}, {1, 2, 3, 4}, 0.25f, {0.25f, 2, 3, 4}},
                              {{0, 0.5f, 0.5f, 0.5f}, {1, 2, 3, 4}, 0.0f, {0, 2, 3, 4}}});
}

TEST(JudgeRules, TipAveragesComeOutAsWorked) {
    Pixel16 tip16 = {32768, 100, 200, 300};
    Depth16::tipAverage(tip16, std::vector<Pixel16>(4), IntegerWeights::tip(70));
    EXPECT_TRUE(Identical(tip16, {19276, 100, 200, 300}));
    PixelFloat tipFloat = {1, 0.5f, 0.25f, 0.125f};
    DepthFloat::tipAverage(tipFloat, std::vector<PixelFloat>(4), FloatWeights::tip(70));
    EXPECT_FLOAT_EQ(tipFloat.alpha, 0.5882353f);
    EXPECT_EQ(tipFloat.red, 0.5f);
}

TEST(JudgeRules, EdgesAreStrictAndTransparencyHasNoColour) {
    const Depth8 eight = Eight(10);
    EXPECT_TRUE(eight.formEdge({255, 0, 0, 0}, {255, 0, 0, 11}));
    EXPECT_FALSE(eight.formEdge({255, 0, 0, 0}, {255, 0, 0, 10}));
    EXPECT_TRUE(eight.formEdge({0, 200, 200, 200}, {255, 200, 200, 200}));
    EXPECT_FALSE(eight.formEdge({0, 255, 255, 255}, {0, 0, 0, 0}));
    const Depth16 sixteen(Values{.colorThreshold = 10});
    EXPECT_FALSE(sixteen.formEdge({32768, 0, 0, 0}, {32768, 1285, 0, 0}));
    EXPECT_TRUE(sixteen.formEdge({32768, 0, 0, 0}, {32768, 1286, 0, 0}));
    const DepthFloat floating(Values{.colorThreshold = 10});
    EXPECT_TRUE(floating.formEdge({1, 0, 0, 0}, {1, 0.04f, 0, 0}));
    EXPECT_FALSE(floating.formEdge({1, 0, 0, 0}, {1, 0.039f, 0, 0}));
    EXPECT_FALSE(floating.formEdge({-0.0f, 1, 1, 1}, {0, 0, 0, 0}));
}

TEST(JudgeRules, DiagonalsAreSkippedInGroupsWithoutAFlag) {
    const Depth8 depth = Eight(10);
    const auto red = [](int x, int y) {
        return Pixel8{255, static_cast<std::uint8_t>(6 * (x + y)), 0, 0};
    };
    const EdgeFlags flags = DetectEdges(12, 4, [&](int x1, int y1, int x2, int y2) {
        return depth.formEdge(red(x1, y1), red(x2, y2));
    });
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 12; ++x) {
            const bool expected = y < 3 && (x == 3 || x == 7 || (x >= 8 && x < 11));
            EXPECT_EQ(flags.bytes.at(x, y), expected ? edgeDiagonal : 0) << x << ", " << y;
        }
}

TEST(JudgeRules, RunsAndFactorsOfDrawnShapes) {
    const Measures step = Draw({"........",  //
                                "####....",  //
                                "########"});
    EXPECT_EQ(step.run(left, 3, 1), 3);
    EXPECT_EQ(step.lengthFactor(left, 3, 3, 1, 70), 70);
    const Measures bothEnds = Draw({"..........",  //
                                    "##......##",  //
                                    "##########"});
    EXPECT_EQ(bothEnds.run(right, 1, 1), 5);
    EXPECT_EQ(bothEnds.lengthFactor(right, 5, 1, 1, 70), 50);
    const Measures block = Draw({"....", ".##.", ".##.", "...."});
    for (const int row : {1, 2}) {
        EXPECT_EQ(block.run(right, 0, row), 1);
        EXPECT_EQ(block.lengthFactor(right, 1, 0, row, 70), 7);
    }
    const Measures line = Draw({"............",  //
                                "##########..",  //
                                "............"});
    EXPECT_EQ(line.thinLineLength(left, 9, 1), 7) << "nine pixels before the last";
    const Measures shorter = Draw({".........",  //
                                   "#######..",  //
                                   "........."});
    EXPECT_EQ(shorter.thinLineLength(left, 6, 1), 5) << "six pixels before the last";
    const Measures stairs = Draw({"......",  //
                                  "....##",  //
                                  "....##",  //
                                  "...###",  //
                                  "..####",  //
                                  ".#####"});
    EXPECT_EQ(stairs.staircaseLength(horizontalStaircases[1], 3, 1), 3);
    EXPECT_TRUE(Draw({"...", ".#.", "..."}).tipShape(1, 1));
}

}  // namespace
}  // namespace judge
