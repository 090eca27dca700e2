// Images as long and as large as they get: tiles of one small picture, each of which comes out as
// the small picture alone does.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/kernel/kernel_run.h"
#include "tests/kernel/random_pictures.h"

namespace {

constexpr judge::Values values{.colorThreshold = 10, .softness = 100};

/// Shapes in the middle, so that no ramp leaves the tile. A tile's width is a multiple of the four
/// columns in which edges are looked for together.
template <typename P>
judge::Picture<P> MakeTile(int width, int height) {
    Dice dice(2);
    const IndexPicture shapes = RandomShapes(std::max(width / 2, 1), std::max(height / 2, 1), dice);
    IndexPicture tile(width, height);
    for (int y = 0; y < shapes.height; ++y)
        for (int x = 0; x < shapes.width; ++x)
            tile.set(x + width / 4, y + height / 4, shapes.get(x, y));
    return Paint(tile, RandomPalette<P>(values, dice));
}

/// Calls visit(pixels, tileRow, count) for each stretch of a row that lies in one tile. Where no
/// whole tile fits any more there is the ground of a tile's first row.
template <typename P, typename Visit>
void ForEachStretch(HostileImage<P>& image, int width, int height, const judge::Picture<P>& tile,
                    const Visit& visit) {
    for (int y = 0; y < height; ++y) {
        const bool covered = y / tile.height < height / tile.height;
        for (int x = 0; x < width; x += tile.width) {
            const int count = std::min(tile.width, width - x);
            visit(image.row(y) + x,
                  &tile.at(0, covered && count == tile.width ? y % tile.height : 0), count);
        }
    }
}

/// Renders an image of that size, of tiles of the other size.
template <typename P>
void ExpectTilesSmoothed(int width, int height, int tileWidth, int tileHeight) {
    const judge::Picture<P> tile = MakeTile<P>(tileWidth, tileHeight);
    const judge::Picture<P> smoothed = RunKernel(values, tile, 1);
    const bool changed = std::memcmp(smoothed.pixels.data(), tile.pixels.data(),
                                     tile.pixels.size() * sizeof(P)) != 0;
    EXPECT_EQ(changed, tileWidth > 1) << "a single column has nothing to smooth";

    HostileImage<P> input(width, height), output(width, height);
    ForEachStretch(input, width, height, tile, [](P* pixels, const P* tileRow, int count) {
        std::copy_n(tileRow, count, pixels);
    });
    RunIn(ToEffectValues(values), input, output, width, height, {});
    std::int64_t wrong = 0;
    ForEachStretch(
        output, width, height, smoothed, [&](const P* pixels, const P* tileRow, int count) {
            wrong += std::memcmp(pixels, tileRow, static_cast<std::size_t>(count) * sizeof(P)) != 0
                         ? 1
                         : 0;
        });
    EXPECT_EQ(wrong, 0) << "stretches of " << width << " x " << height;
}

template <typename P>
class Sizes : public testing::Test {};
using PixelTypes = testing::Types<judge::Pixel8, judge::Pixel16, judge::PixelFloat>;
TYPED_TEST_SUITE(Sizes, PixelTypes);

TYPED_TEST(Sizes, LongestSides) {
    ExpectTilesSmoothed<TypeParam>(32767, 1, 64, 1);
    ExpectTilesSmoothed<TypeParam>(1, 32767, 1, 64);
    ExpectTilesSmoothed<TypeParam>(32767, 67, 64, 64);
    ExpectTilesSmoothed<TypeParam>(67, 32767, 64, 64);
}

/// More than 2^31 bytes an image, 5 GB in all; run by hand.
TEST(LargeImage, DISABLED_PassesTwoGigabytes) {
    ExpectTilesSmoothed<judge::Pixel8>(24000, 24000, 240, 240);
}

}  // namespace
