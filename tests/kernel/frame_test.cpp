// The frame around the kernels: what they refuse, what they ask of the host, and values that no
// control gives.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "tests/kernel/kernel_run.h"
#include "tests/kernel/random_pictures.h"

using host_kit::HostCall;

namespace {

/// A host with two 8-bit images: black above white to be rendered over grey.
struct Stage {
    explicit Stage(int width, int outputWidth = 0, int outputHeight = 3)
        : input(PF_PixelFormat_ARGB32, width, 3),
          output(PF_PixelFormat_ARGB32, outputWidth > 0 ? outputWidth : width, outputHeight) {
        const auto fill = [](host_kit::World& world, int y, int byte) {
            std::memset(world.row<char>(y), byte, static_cast<std::size_t>(world.width()) * 4);
        };
        for (int y = 0; y < 3; ++y) fill(input, y, y == 0 ? 0 : 255);
        for (int y = 0; y < outputHeight; ++y) fill(output, y, 128);
        host.scratchMemory.guarded = true;
        host.calls.record(true);
    }

    PF_Err run(const EffectValues& values, PF_PixelFormat format = PF_PixelFormat_ARGB32) {
        return RunIn(host, values, format, input, output);
    }
    [[nodiscard]] bool outputStartsWith(int row0, int row1) const {
        return *output.row<A_u_char>(0) == row0 && *output.row<A_u_char>(1) == row1;
    }
    [[nodiscard]] bool outputUntouched() const { return outputStartsWith(128, 128); }
    [[nodiscard]] bool outputIsInput() const { return outputStartsWith(0, 255); }
    /// The suites that were asked for, and the widths of the scratch images, in order.
    [[nodiscard]] std::vector<std::string> requests() const {
        std::vector<std::string> requests;
        for (const host_kit::HostCallRecord& call : host.calls.recorded()) {
            if (call.call == HostCall::AcquireSuite) requests.push_back(call.name);
            if (call.call == HostCall::NewWorld) requests.push_back(std::to_string(call.number));
        }
        return requests;
    }

    host_kit::World input, output;
    host_kit::Host host;
};

constexpr EffectValues smooth{10, 70, 0, 0, 0, 0, 0, 0, 0};
constexpr EffectValues keyed{10, 70, 0, 1, 1, 2, 3, 0, 0};
constexpr EffectValues copied{10, 0, 0, 0, 0, 0, 0, 0, 1};

TEST(KernelFrame, RefusesWhatItCannotRender) {
    for (const EffectValues& values : {smooth, keyed, copied}) {
        const auto expectRefusal = [&](Stage&& stage, PF_Err code, PF_PixelFormat format) {
            EXPECT_EQ(stage.run(values, format), code);
            EXPECT_TRUE(stage.outputUntouched());
            EXPECT_EQ(stage.host.calls.count(), 0);
        };
        expectRefusal(Stage(9, 9, 4), PF_Err_BAD_CALLBACK_PARAM, PF_PixelFormat_ARGB32);
        expectRefusal(Stage(9, 10), PF_Err_BAD_CALLBACK_PARAM, PF_PixelFormat_ARGB32);
        expectRefusal(Stage(9), PF_Err_UNRECOGNIZED_PARAM_TYPE, PF_PixelFormat_INVALID);
    }
    Stage stage(9);
    stage.host.givesBasicSuite = false;
    EXPECT_THROW(static_cast<void>(stage.run(smooth)), PF_Err);
    EXPECT_TRUE(stage.outputUntouched());
}

TEST(KernelFrame, AsksForNoMoreThanItNeeds) {
    constexpr int mapStrides[][2] = {{1, 8}, {2, 8}, {3, 8}, {4, 12}, {7, 12}, {8, 16}};
    for (const auto& [width, mapStride] : mapStrides) {
        Stage stage(width);
        EXPECT_EQ(stage.run(smooth), PF_Err_NONE);
        EXPECT_EQ(stage.requests(), (std::vector<std::string>{kPFWorldTransformSuite, kPFWorldSuite,
                                                              std::to_string(mapStride / 4)}));
    }
    const std::pair<EffectValues, std::vector<std::string>> others[] = {
        {copied, {kPFWorldTransformSuite}}, {keyed, {kPFWorldSuite, "4"}}};
    for (const auto& [values, requests] : others) {
        Stage stage(9);
        EXPECT_EQ(stage.run(values), PF_Err_NONE);
        EXPECT_TRUE(stage.outputIsInput());
        EXPECT_EQ(stage.requests(), requests);
    }
}

TEST(KernelFrame, LeavesTheCopyWhenThereIsNoRoomForTheMap) {
    for (const EffectValues& values : {smooth, keyed}) {
        Stage stage(9);
        stage.host.calls.inject({.call = HostCall::NewWorld, .code = 1234});
        EXPECT_EQ(stage.run(values), 1234);
        EXPECT_TRUE(stage.outputIsInput());
    }
}

/// Stored projects and defaults files can hold any integer; the render ends and keeps to its
/// images.
template <typename P>
void RenderWithAnyValues(Dice& dice) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const auto any = [&] {
        return dice.oneOf({least, least + 1, -1000, -1, 0, 1, 70, 1000, 40'000, most});
    };
    for (int i = 0; i < 300; ++i) {
        const judge::Values values{any(), any(), any(), dice.below(2), any(),
                                   any(), any(), any(), any()};
        const auto palette = RandomPalette<P>(RandomValues(true, false, dice), dice);
        RunKernel(values, Paint(RandomShapes(dice.between(1, 80), 12, dice), palette), 1);
    }
}

TEST(KernelFrame, ValuesMayBeAnything) {
    Dice dice(1);
    RenderWithAnyValues<judge::Pixel8>(dice);
    RenderWithAnyValues<judge::Pixel16>(dice);
    RenderWithAnyValues<judge::PixelFloat>(dice);
}

}  // namespace
