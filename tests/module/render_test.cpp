// The render commands.
#include "tests/module/session.h"

using namespace host_kit;

namespace {

TEST(SmartPreRender, HandsTheValuesOver) {
    for (const bool grouped : {true, false}) {
        Session session(grouped ? "" : flatLayout);
        Instance instance(session.effect);
        const EffectValues own{11, 60, 20, grouped ? 1 : 0, 10, 250, 5, 40, grouped ? 0 : 1};
        SetControls(instance, own);
        Picture input(PF_PixelFormat_ARGB32);
        Frame frame(instance, input, {.current = 5, .step = 2, .scale = 30});
        session.host.calls.record(true);
        EXPECT_TRUE(frame.preRender().ok());
        const auto bytes = session.host.handles.bytes(
            static_cast<PF_Handle>(frame.preRenderOutput().pre_render_data));
        ASSERT_EQ(bytes.size(), sizeof own);
        EXPECT_EQ(std::memcmp(bytes.data(), &own, sizeof own), 0);
        EXPECT_EQ(session.recordedNumbers(HostCall::CheckoutParam),
                  grouped ? (std::vector<A_long>{4, 1, 2, 3, 7, 8, 5, 6})
                          : (std::vector<A_long>{4, 1, 2, 3, 6, 7, 4, 5}));
    }
}

bool operator==(const PF_LRect& a, const PF_LRect& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(SmartPreRender, AsksForExactlyTheAreaAndMergesWhatItGets) {
    Session session;
    Instance instance(session.effect);
    Picture input(PF_PixelFormat_ARGB32);
    constexpr PF_LRect got{4, 2, 40, 12};
    constexpr PF_LRect cases[][2] = {{{0, 0, 0, 0}, got},
                                     {{5, 5, 5, 90}, got},
                                     {{90, 9, 100, 9}, got},
                                     {{10, 3, 12, 4}, got},
                                     {{-3, 5, 10, 20}, {-3, 2, 40, 20}}};
    for (const auto& [before, after] : cases) {
        Frame frame(instance, input, {}, PF_LRect{4, 2, 60, 50});
        frame.blankOutput.result_rect = before;
        EXPECT_TRUE(frame.preRender().ok());
        EXPECT_TRUE(frame.layerRequest(0)->rect == (PF_LRect{4, 2, 60, 50}));
        EXPECT_EQ(frame.layerRequest(0)->channel_mask, 0xF);
        EXPECT_TRUE(frame.preRenderOutput().result_rect == after);
        EXPECT_EQ(frame.preRenderOutput().flags, 0);
    }
    Frame outside(instance, input, {}, PF_LRect{100, 100, 110, 110});
    outside.blankOutput.result_rect = {1, 2, 3, 4};
    EXPECT_TRUE(outside.preRender().ok());
    EXPECT_TRUE(outside.preRenderOutput().result_rect == (PF_LRect{1, 2, 3, 4}));
    EXPECT_TRUE(outside.preRenderOutput().max_result_rect == (PF_LRect{0, 0, 40, 12}));
}

TEST(SmartRender, RendersWithThePreRenderedValues) {
    Session session;
    Instance instance(session.effect);
    constexpr PF_PixelFormat format = PF_PixelFormat_ARGB64;
    Picture input(format), smooth(format), again(format), copy(format);
    Frame frame(instance, input);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(frame.preRender().ok());
    instance.setSlider(idSoftness, 0);
    EXPECT_TRUE(frame.render(smooth).ok());
    EXPECT_NE(smooth.pixels(), input.pixels());
    EXPECT_TRUE(frame.render(again).ok());
    EXPECT_EQ(again.pixels(), smooth.pixels());
    EXPECT_TRUE(SmartRender(instance, input, copy).ok());
    EXPECT_EQ(copy.pixels(), input.pixels());

    // Pre-render data that cannot be locked, or none: nothing is rendered.
    session.host.calls.inject({.call = HostCall::LockHandle, .shape = FaultShape::Null});
    EXPECT_TRUE(frame.render(copy).ok());
    session.host.calls.clearFault();
    frame.deletePreRenderData();
    EXPECT_TRUE(frame.render(copy).ok());
    EXPECT_EQ(copy.pixels(), input.pixels());
}

TEST(Render, RefusesOtherAndMixedDepths) {
    Session session;
    Instance instance(session.effect);
    const PF_PixelFormat cases[][2] = {{PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64},
                                       {PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB32},
                                       {PF_PixelFormat_ARGB128, PF_PixelFormat_ARGB128}};
    for (const auto& [from, to] : cases) {
        Picture input(from), output(to);
        const std::vector<char> before = output.pixels();
        EXPECT_EQ(instance.render(input, output).error, PF_Err_UNRECOGNIZED_PARAM_TYPE);
        EXPECT_EQ(output.pixels(), before);
    }
}

}  // namespace
