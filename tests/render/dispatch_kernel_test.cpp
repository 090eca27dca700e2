// The frame around the kernels: what is refused, and what is asked of the host.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "host_kit/books/watched_host.h"
#include "host_kit/command.h"
#include "render/dispatch_kernel.h"

using host_kit::HostCall;

namespace {

/// A host with two 8-bit images: white to be rendered over grey.
struct Stage {
    explicit Stage(int width, int outputWidth = 0, int outputHeight = 3)
        : input(PF_PixelFormat_ARGB32, width, 3),
          output(PF_PixelFormat_ARGB32, outputWidth > 0 ? outputWidth : width, outputHeight) {
        std::memset(input.row<char>(0), 255, std::size_t{12} * static_cast<unsigned>(width));
        std::memset(output.row<char>(0), 128, sizeof(PF_Pixel));
        host.scratchMemory.guarded = true;
        host.calls.record(true);
    }

    PF_Err run(const EffectValues& values, PF_PixelFormat format = PF_PixelFormat_ARGB32) {
        host_kit::Command command(host, PF_Cmd_RENDER);
        command.lendImages(input, &output);
        const RenderJob job = {values, &command.inData, format, &input.record(), &output.record()};
        const PF_Err code = DispatchKernel(job);
        EXPECT_EQ(host.accounts.complaints(), "");
        return code;
    }
    [[nodiscard]] bool outputUntouched() const { return *output.row<A_u_char>(0) == 128; }
    [[nodiscard]] bool outputIsInput() const { return *output.row<A_u_char>(0) == 255; }
    /// The suites that were asked for, and the sizes of the scratch images, in order.
    [[nodiscard]] std::vector<std::string> requests() const {
        std::vector<std::string> requests;
        for (const host_kit::HostCallRecord& call : host.calls.recorded()) {
            if (call.call == HostCall::AcquireSuite || call.call == HostCall::NewWorld)
                requests.push_back(call.name);
        }
        return requests;
    }

    host_kit::World input, output;
    host_kit::WatchedHost host;
};

constexpr EffectValues smooth{10, 70, 0, 0, 0, 0, 0, 0, 0};
constexpr EffectValues keyed{10, 70, 0, 1, 1, 2, 3, 0, 0};
constexpr EffectValues leastSmooth{10, 1, 0, 0, 0, 0, 0, 0, 0};
constexpr EffectValues copied{10, 0, 0, 0, 0, 0, 0, 0, 1};

TEST(DispatchKernel, RefusesWhatItCannotRender) {
    for (const EffectValues& values : {smooth, keyed, copied}) {
        const auto expectRefusal = [&](Stage&& stage, PF_Err code, PF_PixelFormat format) {
            EXPECT_EQ(stage.run(values, format), code);
            EXPECT_TRUE(stage.outputUntouched());
            EXPECT_EQ(stage.host.calls.count(), 0);
        };
        expectRefusal(Stage(9, 9, 4), PF_Err_BAD_CALLBACK_PARAM, PF_PixelFormat_ARGB32);
        expectRefusal(Stage(9, 10), PF_Err_BAD_CALLBACK_PARAM, PF_PixelFormat_ARGB32);
        expectRefusal(Stage(9, 8), PF_Err_BAD_CALLBACK_PARAM, PF_PixelFormat_ARGB32);
        expectRefusal(Stage(9), PF_Err_UNRECOGNIZED_PARAM_TYPE, PF_PixelFormat_INVALID);
    }
}

TEST(DispatchKernel, AsksForNoMoreThanItNeeds) {
    constexpr int mapStrides[][2] = {{1, 8}, {2, 8}, {3, 8}, {4, 12}, {7, 12}, {8, 16}};
    for (const auto& [width, mapStride] : mapStrides) {
        Stage stage(width);
        EXPECT_EQ(stage.run(smooth), PF_Err_NONE);
        EXPECT_EQ(stage.requests(),
                  (std::vector<std::string>{kPFWorldTransformSuite, kPFWorldSuite,
                                            std::to_string(mapStride / 4) + " x 5"}));
    }
    const std::pair<EffectValues, std::vector<std::string>> others[] = {
        {copied, {kPFWorldTransformSuite}},
        {keyed, {kPFWorldSuite, "4 x 5"}},
        {leastSmooth, {kPFWorldTransformSuite, kPFWorldSuite, "4 x 5"}}};
    for (const auto& [values, requests] : others) {
        Stage stage(9);
        EXPECT_EQ(stage.run(values), PF_Err_NONE);
        EXPECT_TRUE(stage.outputIsInput());
        EXPECT_EQ(stage.requests(), requests);
    }
}

TEST(DispatchKernel, LeavesTheCopyWhenThereIsNoRoomForTheMap) {
    for (const EffectValues& values : {smooth, keyed}) {
        Stage stage(9);
        stage.host.calls.inject({.call = HostCall::NewWorld, .code = 1234});
        EXPECT_EQ(stage.run(values), 1234);
        EXPECT_TRUE(stage.outputIsInput());
    }
}

}  // namespace
