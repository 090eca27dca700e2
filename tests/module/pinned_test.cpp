// The pinned results, by the module's file as it is delivered: on Windows stripped and linked for
// good.
#include "tests/kernel/kernel_run.h"
#include "tests/kernel/pinned_results.h"
#include "tests/module/session.h"

using namespace host_kit;

namespace {

template <typename P>
std::uint64_t RenderedChecksum(Instance& instance, PF_PixelFormat format, const PinnedResult& pin) {
    judge::Picture<P> picture = PinnedPicture<P>(pin);
    World input(format, picture.width, picture.height);
    World output(format, picture.width, picture.height);
    const std::span<P> pixels(picture.pixels);
    std::memcpy(input.row<P>(0), pixels.data(), pixels.size_bytes());
    EXPECT_TRUE(SmartRender(instance, input, output).ok());
    std::memcpy(pixels.data(), output.row<P>(0), pixels.size_bytes());
    return Checksum(picture);
}

TEST(PinnedResults, ComeOutOfTheModule) {
    const Session session;
    Instance instance(session.effect);
    for (const PinnedResult& pin : PinnedResults()) {
        SetControls(instance, ToEffectValues(pin.values));
        const std::array<std::uint64_t, 3> checksums{
            RenderedChecksum<judge::Pixel8>(instance, PF_PixelFormat_ARGB32, pin),
            RenderedChecksum<judge::Pixel16>(instance, PF_PixelFormat_ARGB64, pin),
            RenderedChecksum<judge::PixelFloat>(instance, PF_PixelFormat_ARGB128, pin)};
        EXPECT_EQ(checksums, pin.checksums) << pin.what;
    }
}

}  // namespace
