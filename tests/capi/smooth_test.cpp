// Pictures through every order and sample type, against the core itself.
#include <gtest/gtest.h>

#include <thread>

#include "tests/capi/sample_pictures.h"
#include "tests/kernel/kernel_run.h"

namespace {

/// What the core makes of them; samples that it does not change stay what they are. Colour that is
/// multiplied by alpha changes with it; behind an alpha of 0 it is not multiplied.
template <typename P>
void SmoothByCore(const judge::Values& values, const SampleKind& kind, bool isMultiplied, int width,
                  int height, std::vector<Pixel>& pixels) {
    const SampleKind& depth = sampleKinds[kind.channel];
    judge::Picture<P> before(width, height);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const double alpha = kind.value(pixels[i][0]);
        auto* channels = reinterpret_cast<std::byte*>(&before.pixels[i]);
        for (std::size_t c = 0; c < 4; ++c) {
            const bool divides = isMultiplied && c > 0 && alpha != 0;
            const Bits channel = depth.nearest(kind.value(pixels[i][c]) / (divides ? alpha : 1));
            std::memcpy(channels + c * sizeof(P) / 4, &channel, sizeof(P) / 4);
        }
    }
    const judge::Picture<P> after = RunKernel(values, before, 1, FastestForms());
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const Pixel was = BitsOf(before.pixels[i]), is = BitsOf(after.pixels[i]);
        const double alpha = depth.value(is[0]);
        const bool staysClear = alpha == 0 && depth.value(was[0]) == 0;
        for (std::size_t c = 0; c < 4; ++c) {
            const bool goesWithAlpha = isMultiplied && c > 0;
            if (is[c] == was[c] && (!goesWithAlpha || is[0] == was[0])) continue;
            const double factor = goesWithAlpha && !staysClear ? alpha : 1;
            pixels[i][c] = kind.nearest(depth.value(is[c]) * factor);
        }
    }
}

nevrel_settings SettingsOf(const judge::Values& v) {
    return {sizeof(nevrel_settings), v.colorThreshold, v.softness, v.bias,
            v.colorKeyEnable,        v.keyRed,         v.keyGreen, v.keyBlue,
            v.keyThreshold,          v.keyInvert};
}

/// One picture through one order and sample type: apart and in place, wherever images may lie.
void ExpectCoreResult(const PinnedResult& pin, const SampleKind& kind, const OrderKind& order,
                      int width, int height) {
    SCOPED_TRACE(testing::Message() << pin.what << ", order " << order.order << ", samples "
                                    << kind.sample << ", " << width << " x " << height);
    std::vector<Pixel> pixels = DrawPixels(pin, kind, order.channels == 3, width, height);
    const auto before = Pack(pixels, kind, order);
    const auto smoothByCore = kind.channel == NEVREL_UINT8   ? SmoothByCore<judge::Pixel8>
                              : kind.channel == NEVREL_FLOAT ? SmoothByCore<judge::PixelFloat>
                                                             : SmoothByCore<judge::Pixel16>;
    smoothByCore(pin.values, kind, order.isMultiplied, width, height, pixels);
    const auto after = Pack(pixels, kind, order);
    const nevrel_settings settings = SettingsOf(pin.values);
    const int rowBytes = width * order.channels * kind.bytes;
    for (int layout = 0; layout < 6; ++layout) {
        Dice dice(static_cast<std::uint64_t>(layout));
        using Image = HostileImage<std::byte>;
        Image images[] = {Image(rowBytes, height, RandomLayout(kind.bytes, dice)),
                          Image(rowBytes, height, RandomLayout(kind.bytes, dice))};
        const bool inPlace = layout % 2 == 0;
        Image &input = images[0], &output = images[inPlace ? 0 : 1];
        input.load(before.data());
        const nevrel_image from{input.row(0), input.pitch()}, to{output.row(0), output.pitch()};
        ASSERT_EQ(
            nevrel_smooth(&settings, order.order, kind.sample, width, height, &from, &to, nullptr),
            NEVREL_OK);
        EXPECT_TRUE(output.holds(after.data()));
        EXPECT_TRUE(inPlace || input.holds(before.data()));
        EXPECT_TRUE(input.surroundingsIntact() && output.surroundingsIntact());
    }
}

void ExpectCoreResults(const PinnedResult& pin, int width, int height) {
    for (const SampleKind& kind : sampleKinds) {
        for (const OrderKind& order : orderKinds) {
            if (order.channels == 3 && pin.values.colorKeyEnable != 0) continue;
            ExpectCoreResult(pin, kind, order, width, height);
        }
    }
}

TEST(Smooth, GivesWhatTheCoreGives) {
    for (const PinnedResult& pin : PinnedResults()) {
        const IndexPicture whole = pin.draw();
        ExpectCoreResults(pin, whole.width, whole.height);
    }
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {9, 1}, {37, 3}, {2, 2}})
        ExpectCoreResults(PinnedResults().back(), width, height);
}

TEST(Smooth, RunsOnManyThreadsAtOnce) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] { ExpectCoreResults(PinnedResults()[1], 40, 20); });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
