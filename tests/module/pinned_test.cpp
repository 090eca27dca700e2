// The pinned results, by the module's file as it is delivered: on Windows stripped and linked for
// good.
#include "tests/kernel/pinned_results.h"

#include "tests/module/session.h"

using namespace host_kit;

namespace {

template <typename P>
std::uint64_t RenderedChecksum(Instance& instance, PF_PixelFormat format,
                               judge::Picture<P> picture) {
    const auto rowSize = static_cast<std::size_t>(picture.width) * sizeof(P);
    World input(format, picture.width, picture.height),
        output(format, picture.width, picture.height);
    World classic(format, picture.width, picture.height);
    for (int y = 0; y < picture.height; ++y)
        std::memcpy(input.row<P>(y), &picture.at(0, y), rowSize);
    EXPECT_TRUE(SmartRender(instance, input, output).ok());
    if (format != PF_PixelFormat_ARGB128) {  // which only the smart commands render
        EXPECT_TRUE(instance.render(input, classic).ok());
        EXPECT_EQ(classic.checksum(), output.checksum());
    }
    for (int y = 0; y < picture.height; ++y)
        std::memcpy(&picture.at(0, y), output.row<P>(y), rowSize);
    return Checksum(picture);
}

TEST(PinnedResults, ComeOutOfTheModule) {
    const Session session;
    Instance instance(session.effect);
    for (const PinnedResult& pin : PinnedResults()) {
        const judge::Values& v = pin.values;
        SetControls(instance, {v.colorThreshold, v.softness, v.bias, v.colorKeyEnable, v.keyRed,
                               v.keyGreen, v.keyBlue, v.keyThreshold, v.keyInvert});
        const std::array<std::uint64_t, 3> checksums{
            RenderedChecksum(instance, PF_PixelFormat_ARGB32, PinnedPicture<judge::Pixel8>(pin)),
            RenderedChecksum(instance, PF_PixelFormat_ARGB64, PinnedPicture<judge::Pixel16>(pin)),
            RenderedChecksum(instance, PF_PixelFormat_ARGB128,
                             PinnedPicture<judge::PixelFloat>(pin))};
        EXPECT_EQ(checksums, pin.checksums) << pin.what;
    }
}

}  // namespace
