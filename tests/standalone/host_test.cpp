// The host held against an effect that uses every function it offers, and against effects that misbehave.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <iterator>
#include <thread>
#include <vector>

#include "standalone/frame.h"

namespace standalone {
namespace {

struct Call {
    PF_Cmd cmd;
    PF_InData* in;
    PF_OutData* out;
    PF_ParamDef** params;
    PF_LayerDef* output;
    void* extra;
};

template <typename Suite>
const Suite* Acquire(const PF_InData* in, const char* name, A_long version) {
    const void* suite = nullptr;
    in->pica_basicP->AcquireSuite(name, version, &suite);
    return static_cast<const Suite*>(suite);
}

void Release(const PF_InData* in, const char* name, A_long version) {
    in->pica_basicP->ReleaseSuite(name, version);
}

const PF_HandleSuite1* HandleSuite(const PF_InData* in) {
    return Acquire<PF_HandleSuite1>(in, kPFHandleSuite, kPFHandleSuiteVersion1);
}

/// An effect of one slider (id 5) that copies its layer, by both render paths.
PF_Err AddSlider(const Call& call) {
    PF_ParamDef def{};
    def.uu.id = 5;
    def.param_type = PF_Param_SLIDER;
    def.u.sd.value = def.u.sd.dephault = 42;
    call.out->num_params = 2;
    return call.in->inter.add_param(call.in->effect_ref, -1, &def);
}

const SPBasicSuite* rememberedSuite = nullptr;

void DeleteHandle(void* data) {
    PF_InData in{};
    in.pica_basicP = const_cast<SPBasicSuite*>(rememberedSuite);
    const PF_HandleSuite1* suite = HandleSuite(&in);
    if (suite == nullptr) return;
    suite->host_dispose_handle(static_cast<PF_Handle>(data));
    Release(&in, kPFHandleSuite, kPFHandleSuiteVersion1);
}

PF_Err PreRender(const Call& call) {
    auto* extra = static_cast<PF_PreRenderExtra*>(call.extra);
    PF_ParamDef def{};
    PF_Err error = call.in->inter.checkout_param(call.in->effect_ref, 1, call.in->current_time,
                                                 call.in->time_step, call.in->time_scale, &def);
    if (error != 0) return error;
    call.in->inter.checkin_param(call.in->effect_ref, &def);
    const PF_HandleSuite1* suite = HandleSuite(call.in);
    if (suite == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    PF_Handle handle = suite->host_new_handle(4);
    if (handle != nullptr) {
        if (void* memory = suite->host_lock_handle(handle)) {
            std::memcpy(memory, &def.u.sd.value, 4);
            suite->host_unlock_handle(handle);
        }
        extra->output->pre_render_data = handle;
        extra->output->delete_pre_render_data_func = DeleteHandle;
    }
    Release(call.in, kPFHandleSuite, kPFHandleSuiteVersion1);
    PF_CheckoutResult layer{};
    error = extra->cb->checkout_layer(call.in->effect_ref, 0, 3, &extra->input->output_request,
                                      call.in->current_time, call.in->time_step, call.in->time_scale, &layer);
    extra->output->result_rect = layer.result_rect;
    return error;
}

PF_Err CopyImage(const Call& call, PF_EffectWorld* from, PF_EffectWorld* to) {
    if (from == nullptr || to == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const auto* transform =
        Acquire<PF_WorldTransformSuite1>(call.in, kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1);
    if (transform == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    PF_Err error = transform->copy(call.in->effect_ref, from, to, nullptr, nullptr);
    Release(call.in, kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1);
    const auto* worlds = Acquire<PF_WorldSuite1>(call.in, kPFWorldSuite, kPFWorldSuiteVersion1);
    if (worlds == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    PF_EffectWorld scratch{};
    if (error == 0) error = worlds->new_world(call.in->effect_ref, 3, 2, 0, &scratch);
    if (scratch.data != nullptr) worlds->dispose_world(call.in->effect_ref, &scratch);
    Release(call.in, kPFWorldSuite, kPFWorldSuiteVersion1);
    return error;
}

PF_Err SmartCopy(const Call& call) {
    auto* extra = static_cast<PF_SmartRenderExtra*>(call.extra);
    PF_EffectWorld* layer = nullptr;
    PF_EffectWorld* output = nullptr;
    PF_Err error = extra->cb->checkout_layer_pixels(call.in->effect_ref, 3, &layer);
    if (error == 0) error = extra->cb->checkout_output(call.in->effect_ref, &output);
    if (error == 0) error = CopyImage(call, layer, output);
    return error == 0 ? extra->cb->checkin_layer_pixels(call.in->effect_ref, 3) : error;
}

PF_Err Sequence(const Call& call) {
    const PF_HandleSuite1* suite = HandleSuite(call.in);
    if (suite == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    if (call.cmd == PF_Cmd_SEQUENCE_SETDOWN) {
        suite->host_dispose_handle(call.in->sequence_data);
    } else {
        call.out->sequence_data = suite->host_new_handle(4);
        if (void* memory = suite->host_lock_handle(call.out->sequence_data)) {
            std::memset(memory, call.cmd, 4);
            suite->host_unlock_handle(call.out->sequence_data);
        }
    }
    Release(call.in, kPFHandleSuite, kPFHandleSuiteVersion1);
    return call.out->sequence_data == nullptr && call.cmd != PF_Cmd_SEQUENCE_SETDOWN ? PF_Err_OUT_OF_MEMORY
                                                                                     : 0;
}

PF_Err DisableSlider(const Call& call) {
    const auto* suite = Acquire<PF_ParamUtilsSuite1>(call.in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion1);
    if (suite == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    PF_ParamDef def = *call.params[1];
    def.ui_flags |= PF_PUI_DISABLED;
    const PF_Err error = suite->PF_UpdateParamUI(call.in->effect_ref, 1, &def);
    Release(call.in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion1);
    return error;
}

PF_Err CopyEffect(PF_Cmd cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[], PF_LayerDef* output,
                  void* extra) {
    const Call call{cmd, in, out, params, output, extra};
    switch (cmd) {
        case PF_Cmd_PARAMS_SETUP:
            return AddSlider(call);
        case PF_Cmd_SEQUENCE_SETUP:
        case PF_Cmd_SEQUENCE_RESETUP:
        case PF_Cmd_SEQUENCE_FLATTEN:
        case PF_Cmd_SEQUENCE_SETDOWN:
            return Sequence(call);
        case PF_Cmd_UPDATE_PARAMS_UI:
            return DisableSlider(call);
        case PF_Cmd_RENDER:
            return CopyImage(call, &params[0]->u.ld, output);
        case PF_Cmd_SMART_PRE_RENDER:
            return PreRender(call);
        case PF_Cmd_SMART_RENDER:
            return SmartCopy(call);
        default:
            return PF_Err_NONE;
    }
}

/// Does something else for one command and copies for the rest.
std::function<PF_Err(const Call&)> misdeed;
PF_Err MisbehavingEffect(PF_Cmd cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[],
                         PF_LayerDef* output, void* extra) {
    if (cmd == PF_Cmd_PARAMS_SETUP) return CopyEffect(cmd, in, out, params, output, extra);
    return misdeed({cmd, in, out, params, output, extra});
}

class HostTest : public testing::Test {
  protected:
    HostTest() {
        const PF_InData in = Command(host, PF_Cmd_ABOUT).inData;
        rememberedSuite = in.pica_basicP;
        host.scratchMemory = {20, 3, false, true, 9};
        host.watchesInputs = true;
    }

    void fill() {
        for (A_long y = 0; y < input.height(); ++y) {
            for (A_long x = 0; x < input.width(); ++x)
                input.row<PF_Pixel16>(y)[x] = {1, 2, A_u_short(x), A_u_short(y)};
        }
    }

    Host host;
    World input{PF_PixelFormat_ARGB64, 6, 4, {10, 2, true, true, 3}};
    World output{PF_PixelFormat_ARGB64, 6, 4, {6, 0, false, true, 4}};
};

TEST_F(HostTest, ALifeLeavesTheBooksBalanced) {
    fill();
    Effect effect(host, CopyEffect);
    ASSERT_TRUE(effect.globalSetup().ok());
    ASSERT_TRUE(effect.paramsSetup().ok());
    {
        Instance instance(effect);
        EXPECT_EQ(instance.param(5).u.sd.value, 42);
        EXPECT_THROW(instance.setSlider(6, 0), std::out_of_range);
        EXPECT_TRUE(instance.sequenceSetup().ok());
        EXPECT_EQ(host.accounts.kept().size(), 1U);
        std::vector<std::byte> flat;
        EXPECT_TRUE(instance.sequenceFlatten(flat).ok());
        EXPECT_EQ(flat, std::vector<std::byte>(4, std::byte{PF_Cmd_SEQUENCE_FLATTEN}));
        EXPECT_TRUE(instance.sequenceResetup(flat).ok());
        EXPECT_TRUE(instance.updateParamsUi().ok());
        EXPECT_EQ(instance.param(5).ui_flags, PF_PUI_DISABLED);
        EXPECT_TRUE(instance.render(input, output).ok());
        EXPECT_EQ(output.row<PF_Pixel16>(3)[5].blue, 3);
        Frame frame(instance, input, {}, PF_LRect{2, 1, 40, 3});
        ASSERT_TRUE(frame.preRender().ok());
        ASSERT_TRUE(frame.preRender().ok());
        EXPECT_EQ(frame.layerRequest(3)->rect.right, 40);
        EXPECT_EQ(frame.preRenderOutput().result_rect.right, 6);
        World part(PF_PixelFormat_ARGB64, 4, 2);
        EXPECT_TRUE(frame.render(part).ok());
        EXPECT_EQ(part.row<PF_Pixel16>(0)[0].green, 2);
        EXPECT_EQ(part.row<PF_Pixel16>(1)[3].blue, 2);
        EXPECT_EQ(host.accounts.kept().size(), 2U);
    }
    EXPECT_EQ(host.accounts.kept().size(), 0U);
    EXPECT_EQ(host.accounts.complaints(), "");
}

TEST_F(HostTest, EveryFaultReachesTheEffectAndTheBooksStayBalanced) {
    Effect effect(host, CopyEffect);
    ASSERT_TRUE(effect.paramsSetup().ok());
    int fired = 0;
    for (const FaultShape shape : {FaultShape::Error, FaultShape::Null}) {
        for (int nth = 1;; ++nth) {
            Instance instance(effect);
            host.calls.resetCounts();
            host.calls.inject({.call = {}, .nth = nth, .shape = shape, .code = 77});
            instance.sequenceSetup();
            SmartRender(instance, input, output);
            const bool past = host.calls.count() < nth;
            fired += host.calls.faultsFired();
            host.calls.clearFault();
            if (past) break;
        }
    }
    EXPECT_GT(fired, 15);
    EXPECT_EQ(host.accounts.kept().size(), 0U);
    EXPECT_EQ(host.accounts.complaints(), "");
    host.calls.inject({.call = HostCall::CopyWorld, .nth = 2, .code = 77, .fromThereOn = true});
    Instance instance(effect);
    host.calls.record(true);
    std::array<PF_Err, 3> errors{};
    for (PF_Err& error : errors) error = instance.render(input, output).error;
    EXPECT_EQ(errors, (std::array<PF_Err, 3>{0, 77, 77}));
    EXPECT_EQ(host.calls.recorded().front().name, kPFWorldTransformSuite);
}

struct Misdeed {
    const char* complaint;
    PF_Cmd cmd;
    std::function<void(const Call&)> act;
};

TEST_F(HostTest, MisdeedsAreNoted) {
    const std::vector<Misdeed> misdeeds{
        {"outstanding: suite PF Handle Suite 2 of command 11", PF_Cmd_RENDER,
         [](const Call& c) { HandleSuite(c.in); }},
        {"suite given back that was not lent", PF_Cmd_RENDER,
         [](const Call& c) { Release(c.in, kPFHandleSuite, kPFHandleSuiteVersion1); }},
        {"lock of a handle that is none", PF_Cmd_RENDER,
         [](const Call& c) {
             const PF_HandleSuite1* suite = HandleSuite(c.in);
             PF_Handle handle = suite->host_new_handle(8);
             suite->host_dispose_handle(handle);
             suite->host_lock_handle(handle);
         }},
        {"disposal of a locked handle", PF_Cmd_RENDER,
         [](const Call& c) {
             const PF_HandleSuite1* suite = HandleSuite(c.in);
             PF_Handle handle = suite->host_new_handle(8);
             suite->host_lock_handle(handle);
             suite->host_dispose_handle(handle);
         }},
        {"parameter given back that was not lent", PF_Cmd_RENDER,
         [](const Call& c) { c.in->inter.checkin_param(c.in->effect_ref, c.params[1]); }},
        {"check-out of parameter 2", PF_Cmd_RENDER,
         [](const Call& c) {
             PF_ParamDef def{};
             c.in->inter.checkout_param(c.in->effect_ref, 2, 0, 1, 24, &def);
         }},
        {"declaration of a parameter out of turn", PF_Cmd_RENDER, [](const Call& c) { AddSlider(c); }},
        {"foreign effect_ref", PF_Cmd_RENDER,
         [](const Call& c) { c.in->inter.checkin_param(nullptr, c.params[1]); }},
        {"an image that this command was not lent", PF_Cmd_RENDER,
         [](const Call& c) {
             PF_EffectWorld stranger{};
             PF_Pixel* pixel = nullptr;
             c.in->utils->get_pixel_data8(&stranger, nullptr, &pixel);
         }},
        {"wrote to the input record", PF_Cmd_RENDER, [](const Call& c) { c.in->quality = 0; }},
        {"wrote to the parameter array", PF_Cmd_RENDER, [](const Call& c) { c.params[1]->u.sd.value = 0; }},
        {"wrote to the input image", PF_Cmd_RENDER,
         [](const Call& c) { static_cast<char*>(c.params[0]->u.ld.data)[0] ^= 1; }},
        {"wrote outside an image", PF_Cmd_RENDER,
         [](const Call& c) { static_cast<char*>(c.output->data)[-1] ^= 1; }},
        {"pixels that were not asked for", PF_Cmd_SMART_RENDER, [](const Call& c) { SmartCopy(c); }},
        {"without a delete function", PF_Cmd_SMART_PRE_RENDER,
         [](const Call& c) {
             static_cast<PF_PreRenderExtra*>(c.extra)->output->pre_render_data =
                 HandleSuite(c.in)->host_new_handle(8);
         }},
    };
    for (const Misdeed& entry : misdeeds) {
        Host strict;
        strict.watchesInputs = true;
        Effect effect(strict, MisbehavingEffect);
        ASSERT_TRUE(effect.paramsSetup().ok());
        Instance instance(effect);
        misdeed = [&](const Call& call) {
            if (call.cmd == entry.cmd) entry.act(call);
            return PF_Err_NONE;
        };
        World target(PF_PixelFormat_ARGB64, 6, 4, {0, 0, false, true, 5});
        if (entry.cmd == PF_Cmd_RENDER) instance.render(input, target);
        if (entry.cmd != PF_Cmd_RENDER) SmartRender(instance, input, target);
        EXPECT_NE(strict.accounts.complaints().find(entry.complaint), std::string::npos)
            << entry.complaint << " is not in:\n"
            << strict.accounts.complaints();
    }
}

TEST_F(HostTest, ServesSeveralThreadsInOneHostAndInHostsOfTheirOwn) {
    fill();
    Effect shared(host, CopyEffect);
    ASSERT_TRUE(shared.paramsSetup().ok());
    Instance instance(shared);
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads) {
        thread = std::thread([&] {
            Host own;
            Effect effect(own, CopyEffect);
            effect.paramsSetup();
            Instance ownInstance(effect);
            World target(PF_PixelFormat_ARGB64, 6, 4);
            for (int round = 0; round < 50; ++round) {
                EXPECT_TRUE(SmartRender(instance, input, target).ok());
                EXPECT_TRUE(instance.updateParamsUi().ok());
                EXPECT_TRUE(SmartRender(ownInstance, input, target).ok());
            }
            EXPECT_EQ(own.accounts.complaints(), "");
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(host.accounts.complaints(), "");
    EXPECT_EQ(host.accounts.kept().size(), 0U);
}

}  // namespace
}  // namespace standalone
