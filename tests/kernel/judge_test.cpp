// The kernels against the judge, bit for bit, on random pictures.
//
// Every picture comes from one seed. A failure prints it; NEVREL_TEST_SEED=<seed> starts the run
// there.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/kernel/any_values.h"

namespace {

#ifdef NDEBUG
constexpr int picturesPerWidth = 600;
#else
constexpr int picturesPerWidth = 6;
#endif
constexpr int widest = 67;

std::uint64_t FirstSeed() {
    const char* seed = std::getenv("NEVREL_TEST_SEED");
    return seed == nullptr ? 1'000'000 : std::strtoull(seed, nullptr, 10);
}

/// As Identical, but any NaN equals any other: which operand's bits a NaN keeps is the compiler's
/// choice.
template <typename P>
bool SameResult(const P& p, const P& q) {
    const auto same = [](auto a, auto b) {
        return (a != a && b != b) || std::memcmp(&a, &b, sizeof a) == 0;
    };
    return same(p.alpha, q.alpha) && same(p.red, q.red) && same(p.green, q.green) &&
           same(p.blue, q.blue);
}

template <typename P>
class KernelAgainstJudge : public testing::Test {
  protected:
    /// Renders one picture both ways; false on a mismatch, which it reports.
    bool agree(const judge::Values& values, const IndexPicture& shapes,
               const std::vector<P>& palette, std::uint64_t seed) {
        const judge::Picture<P> picture = Paint(shapes, palette);
        const judge::Picture<P> kernel = RunKernel(values, picture, seed);
        const judge::Picture<P> judged = judge::Render(values, picture);
        const auto [made, right] =
            std::ranges::mismatch(kernel.pixels, judged.pixels, SameResult<P>);
        if (right == judged.pixels.end() && !this->HasFailure()) return true;
        const auto at = right - judged.pixels.begin();
        ADD_FAILURE() << "seed " << seed << ", " << picture.width << " x " << picture.height
                      << ", at (" << at % picture.width << ", " << at / picture.width << ')';
        return false;
    }

    /// The mode is without a key, with one or with an inverted one.
    bool agreeOnShapes(int width, int height, std::uint64_t mode, Dice& dice, std::uint64_t seed) {
        const judge::Values values = RandomValues(mode > 0, mode == 2, dice);
        const std::vector<P> palette = RandomPalette<P>(values, dice);
        return agree(values, RandomShapes(width, height, dice), palette, seed);
    }
};

using PixelTypes = testing::Types<judge::Pixel8, judge::Pixel16, judge::PixelFloat>;
TYPED_TEST_SUITE(KernelAgainstJudge, PixelTypes);

/// Width and key mode follow from the seed, so that consecutive seeds cover all of them.
TYPED_TEST(KernelAgainstJudge, EveryWidthAndKeyMode) {
    const std::uint64_t first = FirstSeed();
    for (std::uint64_t seed = first; seed < first + picturesPerWidth * widest; ++seed) {
        Dice dice(seed);
        const int width = 1 + static_cast<int>(seed % widest);
        const int height = dice.oneIn(3) ? dice.between(1, 8) : dice.between(1, 40);
        if (!this->agreeOnShapes(width, height, seed / widest % 3, dice, seed)) return;
    }
}

/// The vector forms take a row in blocks and windows; these widths end in every place of one. In
/// the last picture a batch of windows ends within a row.
TYPED_TEST(KernelAgainstJudge, WidthsOfManyVectors) {
    const auto agreeAt = [this](int width) {
        const auto seed = static_cast<std::uint64_t>(width);
        Dice dice(seed);
        return this->agreeOnShapes(width, 1 + width % 9, seed % 3, dice, seed);
    };
    int width = widest + 1;
    while (width <= widest + 240 && agreeAt(width)) ++width;
    agreeAt(2005);
}

/// The longest sides that a host's images have.
TYPED_TEST(KernelAgainstJudge, LongestSides) {
    Dice dice(2);
    const judge::Values values{.colorThreshold = 10, .softness = 100};
    const std::vector<TypeParam> palette = RandomPalette<TypeParam>(values, dice);
    for (const auto& [width, height] : {std::pair{32767, 5}, {5, 32767}})
        EXPECT_TRUE(this->agree(values, RandomShapes(width, height, dice), palette, 1));
}

/// What lies in the last corner of more than 2^31 bytes comes out as it does alone; 10 GB in all,
/// run by hand.
TEST(LargeImage, DISABLED_PassesTwoGigabytes) {
    constexpr int size = 24000, corner = 240;
    Dice dice(2);
    const judge::Values values{.colorThreshold = 10, .softness = 100};
    const auto palette = RandomPalette<judge::Pixel8>(values, dice);
    const auto renderAtTheEnd = [&](int side) {
        IndexPicture shapes(side, side);
        for (int i = 1; i < corner / 2; ++i)
            shapes.fill(side - i - i % 7, side - 1 - i / 3, side - 1, side - 1, 1 + i / 30 % 3);
        return RunKernel(values, Paint(shapes, palette), 1, FastestForms());
    };
    const auto expected = renderAtTheEnd(corner), result = renderAtTheEnd(size);
    for (int y = 0; y < corner; ++y)
        EXPECT_EQ(std::memcmp(&result.at(size - corner, size - corner + y), &expected.at(0, y),
                              corner * sizeof(judge::Pixel8)),
                  0)
            << y;
}

/// Runs, thin lines and staircases far longer than the random pictures hold; staircases in every
/// direction whose ramp never runs out, so that they are blended to the picture's edge; and
/// pictures in which every pixel differs from all around it: tips take a way of their own there.
/// One colour of eight is black, which is keyed out.
TYPED_TEST(KernelAgainstJudge, RareShapes) {
    std::vector<TypeParam> palette;
    for (int i = 0; i < 64; ++i) {
        const auto channel = static_cast<typename TypeParam::Channel>(i);
        palette.push_back(i % 8 == 0 ? TypeParam{channel, 0, 0, 0}
                                     : TypeParam{channel, channel, 1, channel});
    }
    IndexPicture step(3000, 3), line(5, 2500);
    step.fill(0, 2, 2999, 2, 1);
    step.fill(1500, 1, 2999, 1, 1);
    line.fill(2, 10, 2, 2400, 1);
    std::vector<IndexPicture> pictures = {step, line};
    constexpr int size = 200;
    for (int direction = 0; direction < 4; ++direction) {
        IndexPicture& stairs = pictures.emplace_back(size, size);
        for (int y = 2; y < size; ++y)
            for (int x = 0; x < std::max(y, 4); ++x)
                stairs.set(direction % 2 == 0 ? x : size - 1 - x, direction < 2 ? y : size - 1 - y,
                           1);
    }
    for (const int width : {1, 2, 3, 47, 48, 49, 96, 97, 400}) {
        IndexPicture& specks = pictures.emplace_back(width, 5);
        for (int i = 0; i < width * 5; ++i)
            specks.set(i % width, i / width, (7 * (i % width) + 13 * (i / width)) % 64);
    }
    for (const int softness : {70, 100, 20'000})
        for (const int key : {0, 1})
            for (const IndexPicture& picture : pictures)
                EXPECT_TRUE(this->agree(
                    {.colorThreshold = 0, .softness = softness, .bias = 30, .colorKeyEnable = key},
                    picture, palette, 1));
}

/// Stored projects and defaults files can hold any integer.
TYPED_TEST(KernelAgainstJudge, ValuesMayBeAnything) {
    Dice dice(1);
    for (int i = 0; i < 300; ++i) RunWithAnyValues<TypeParam>(dice);
}

using FloatKernels = KernelAgainstJudge<judge::PixelFloat>;

TEST_F(FloatKernels, NotANumberAndInfinity) {
    constexpr float odd[] = {NAN, INFINITY, -INFINITY, 1e30f, -0.5f};
    for (std::uint64_t seed = 0; seed < widest * 3; ++seed) {
        Dice dice(seed);
        const judge::Values values = RandomValues(seed % 3 > 0, seed % 3 == 2, dice);
        std::vector<judge::PixelFloat> palette = RandomPalette<judge::PixelFloat>(values, dice);
        for (judge::PixelFloat& p : palette)
            (dice.oneIn(2) ? p.alpha : p.green) = dice.oneIn(2) ? p.red : odd[dice.below(5)];
        if (!agree(values, RandomShapes(1 + static_cast<int>(seed % widest), 20, dice), palette,
                   seed))
            return;
    }
}

/// Against transparency, a staircase's ramp can end in a weight of 0 on a pixel that is 0 as well.
TEST_F(FloatKernels, RampsThatEndInNothing) {
    const judge::PixelFloat opaque = {1, 0.5f, 2, -1}, clear = {0, 1, 1, 1};
    for (int cells = 2; cells < 40; ++cells) {
        IndexPicture stairs(44, cells + 4);
        for (int y = 2; y < stairs.height; ++y) stairs.fill(0, y, std::min(y, cells), y, 1);
        for (const int bias : {0, 50, 100}) {
            const judge::Values values{.colorThreshold = 10, .softness = 100, .bias = bias};
            for (const auto& palette : {std::vector{opaque, clear}, std::vector{clear, opaque}})
                if (!agree(values, stairs, palette, 1)) return;
        }
    }
}

}  // namespace
