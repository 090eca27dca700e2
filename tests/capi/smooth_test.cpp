// Pictures through every order and sample type, against the core itself.
#include <gtest/gtest.h>

#include <thread>

#include "tests/capi/sample_kinds.h"
#include "tests/kernel/kernel_run.h"
#include "tests/kernel/pinned_results.h"

namespace {

struct OrderKind {
    nevrel_order order;
    int channels;
    int places[4];  ///< of alpha, red, green and blue
};
constexpr OrderKind orderKinds[] = {{NEVREL_RGBA, 4, {3, 0, 1, 2}},
                                    {NEVREL_ARGB, 4, {0, 1, 2, 3}},
                                    {NEVREL_BGRA, 4, {3, 2, 1, 0}},
                                    {NEVREL_RGB, 3, {-1, 0, 1, 2}}};

/// Pixels of four samples in the order of the core.
struct Samples {
    int width, height;
    std::vector<Bits> bits;
};

Samples Draw(const PinnedResult& pin, const SampleKind& kind, bool opaque, int width, int height) {
    const auto picture = PinnedPicture<judge::Pixel8>(pin);
    Samples samples{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const judge::Pixel8& p = picture.at(x, y);
            samples.bits.push_back(opaque ? kind.full : kind.fromByte(p.alpha));
            for (const int v : {p.red, p.green, p.blue}) samples.bits.push_back(kind.fromByte(v));
        }
    }
    return samples;
}

/// What the core makes of them; those that it does not change stay what they are.
template <typename P>
void SmoothByCore(const judge::Values& values, const SampleKind& kind, Samples& samples) {
    judge::Picture<P> before(samples.width, samples.height);
    constexpr std::size_t size = sizeof(typename P::Channel);
    auto* channels = reinterpret_cast<std::byte*>(before.pixels.data());
    for (std::size_t i = 0; i < samples.bits.size(); ++i) {
        const Bits bits = kind.toChannel(samples.bits[i]);
        std::memcpy(channels + i * size, &bits, size);
    }
    const judge::Picture<P> after = RunKernel(values, before, 1, FastestForms());
    const auto* made = reinterpret_cast<const std::byte*>(after.pixels.data());
    for (std::size_t i = 0; i < samples.bits.size(); ++i) {
        if (std::memcmp(made + i * size, channels + i * size, size) == 0) continue;
        Bits bits = 0;
        std::memcpy(&bits, made + i * size, size);
        samples.bits[i] = kind.toSample(bits);
    }
}

std::vector<std::byte> Pack(const Samples& samples, const SampleKind& kind,
                            const OrderKind& order) {
    const std::size_t pixels = samples.bits.size() / 4;
    const auto pixelBytes = static_cast<std::size_t>(order.channels * kind.bytes);
    std::vector<std::byte> bytes(pixels * pixelBytes);
    for (std::size_t i = 0; i < pixels * 4; ++i) {
        const int place = order.places[i % 4];
        if (place < 0) continue;
        std::memcpy(bytes.data() + i / 4 * pixelBytes + place * kind.bytes, &samples.bits[i],
                    static_cast<std::size_t>(kind.bytes));
    }
    return bytes;
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
    Samples samples = Draw(pin, kind, order.channels == 3, width, height);
    const auto before = Pack(samples, kind, order);
    (kind.depthBytes == 1   ? SmoothByCore<judge::Pixel8>
     : kind.depthBytes == 2 ? SmoothByCore<judge::Pixel16>
                            : SmoothByCore<judge::PixelFloat>)(pin.values, kind, samples);
    const auto after = Pack(samples, kind, order);
    const nevrel_settings settings = SettingsOf(pin.values);
    const int rowBytes = width * order.channels * kind.bytes;
    for (int layout = 0; layout < 6; ++layout) {
        Dice dice(static_cast<std::uint64_t>(layout));
        using Image = HostileImage<std::byte>;
        Image images[] = {Image(rowBytes, height, RandomLayout(kind.bytes, dice)),
                          Image(rowBytes, height, RandomLayout(kind.bytes, dice))};
        const bool inPlace = layout % 2 == 0;
        Image &input = images[0], &output = images[inPlace ? 0 : 1];
        const auto rowSize = static_cast<std::size_t>(rowBytes);
        const auto rowIn = [&](const auto& all, int y) { return all.data() + y * rowBytes; };
        for (int y = 0; y < height; ++y) std::memcpy(input.row(y), rowIn(before, y), rowSize);
        const nevrel_image from{input.row(0), input.pitch()}, to{output.row(0), output.pitch()};
        ASSERT_EQ(
            nevrel_smooth(&settings, order.order, kind.sample, width, height, &from, &to, nullptr),
            NEVREL_OK);
        for (int y = 0; y < height; ++y) {
            EXPECT_EQ(std::memcmp(output.row(y), rowIn(after, y), rowSize), 0) << "row " << y;
            if (inPlace) continue;
            EXPECT_EQ(std::memcmp(input.row(y), rowIn(before, y), rowSize), 0) << "row " << y;
        }
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
