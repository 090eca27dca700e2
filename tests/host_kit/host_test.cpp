// What the host's books and checks notice, and that a host without books stays sound as well. That
// they stay balanced with an effect that behaves, and what every fault does to one, is for the
// tests of the module.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "host_kit/books/watched_host.h"
#include "host_kit/frame.h"

namespace host_kit {
namespace {

/// What an effect is called with.
struct Call {
    PF_InData* in;
    PF_ParamDef** params;
    PF_LayerDef* output;
    void* extra;
};

/// Acquires a suite and never gives it back.
template <typename Suite>
const Suite* Acquire(const Call& call, const char* name, A_long version) {
    const void* suite = nullptr;
    call.in->pica_basicP->AcquireSuite(name, version, &suite);
    return static_cast<const Suite*>(suite);
}
const PF_HandleSuite1* HandleSuite(const Call& call) {
    return Acquire<PF_HandleSuite1>(call, kPFHandleSuite, kPFHandleSuiteVersion1);
}

const PF_SmartRenderCallbacks& SmartRenderHost(const Call& call) {
    return *static_cast<PF_SmartRenderExtra*>(call.extra)->cb;
}

void CheckOutLayer(const Call& call) {
    const auto& extra = *static_cast<PF_PreRenderExtra*>(call.extra);
    PF_CheckoutResult result;
    extra.cb->checkout_layer(call.in->effect_ref, 0, 0, &extra.input->output_request, 0, 1, 24,
                             &result);
}

PF_Err AddSlider(const Call& call) {
    PF_ParamDef def{};
    def.uu.id = 5;
    def.param_type = PF_Param_SLIDER;
    return call.in->inter.add_param(call.in->effect_ref, -1, &def);
}

struct Misdeed {
    const char* complaint;
    PF_Cmd cmd;
    std::function<void(const Call&)> act;
};

const std::vector<Misdeed> misdeeds{
    {"outstanding: suite PF Handle Suite 2 of command 11", PF_Cmd_RENDER,
     [](const Call& c) { HandleSuite(c); }},
    {"suite given back that was not lent", PF_Cmd_RENDER,
     [](const Call& c) {
         c.in->pica_basicP->ReleaseSuite(kPFHandleSuite, kPFHandleSuiteVersion1);
     }},
    {"lock of a handle that is none", PF_Cmd_RENDER,
     [](const Call& c) {
         const PF_HandleSuite1* suite = HandleSuite(c);
         PF_Handle handle = suite->host_new_handle(8);
         suite->host_dispose_handle(handle);
         suite->host_lock_handle(handle);
     }},
    {"unlock of a handle that is not locked", PF_Cmd_RENDER,
     [](const Call& c) {
         const PF_HandleSuite1* suite = HandleSuite(c);
         suite->host_unlock_handle(suite->host_new_handle(8));
     }},
    {"disposal of a handle that is locked or none", PF_Cmd_RENDER,
     [](const Call& c) {
         const PF_HandleSuite1* suite = HandleSuite(c);
         PF_Handle handle = suite->host_new_handle(8);
         auto* bytes = static_cast<char*>(suite->host_lock_handle(handle));
         suite->host_dispose_handle(handle);
         *bytes = 1;
     }},
    {"disposal of no scratch image", PF_Cmd_RENDER,
     [](const Call& c) {
         Acquire<PF_WorldSuite1>(c, kPFWorldSuite, kPFWorldSuiteVersion1)
             ->dispose_world(c.in->effect_ref, c.output);
         static_cast<char*>(c.output->data)[0] = 1;
     }},
    {"parameter given back that was not lent", PF_Cmd_RENDER,
     [](const Call& c) { c.in->inter.checkin_param(c.in->effect_ref, c.params[1]); }},
    {"check-out of a parameter that there is not", PF_Cmd_RENDER,
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
    {"wrote to the parameter array", PF_Cmd_RENDER,
     [](const Call& c) { c.params[1]->u.sd.value = 1; }},
    {"wrote to the input image", PF_Cmd_RENDER,
     [](const Call& c) { static_cast<char*>(c.params[0]->u.ld.data)[0] ^= 1; }},
    {"wrote outside an image", PF_Cmd_RENDER,
     [](const Call& c) { static_cast<char*>(c.output->data)[-1] ^= 1; }},
    {"pixels that were not asked for", PF_Cmd_SMART_RENDER,
     [](const Call& c) {
         PF_EffectWorld* layer = nullptr;
         SmartRenderHost(c).checkout_layer_pixels(c.in->effect_ref, 3, &layer);
     }},
    {"are out already", PF_Cmd_SMART_RENDER,
     [](const Call& c) {
         PF_EffectWorld* layer = nullptr;
         for (int i = 0; i < 2; ++i)
             SmartRenderHost(c).checkout_layer_pixels(c.in->effect_ref, 0, &layer);
     }},
    {"check-in of pixels that are not out", PF_Cmd_SMART_RENDER,
     [](const Call& c) { SmartRenderHost(c).checkin_layer_pixels(c.in->effect_ref, 0); }},
    {"without a delete function", PF_Cmd_SMART_PRE_RENDER,
     [](const Call& c) {
         static_cast<PF_PreRenderExtra*>(c.extra)->output->pre_render_data =
             HandleSuite(c)->host_new_handle(8);
     }},
};

const Misdeed* misdeed = nullptr;

/// Declares a slider, asks for the layer, commits the misdeed at the command that it is for, and
/// does nothing else.
PF_Err MisbehavingEffect(PF_Cmd cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[],
                         PF_LayerDef* output, void* extra) {
    const Call call{in, params, output, extra};
    if (cmd == PF_Cmd_SMART_PRE_RENDER) CheckOutLayer(call);
    if (cmd == misdeed->cmd) misdeed->act(call);
    if (cmd != PF_Cmd_PARAMS_SETUP) return PF_Err_NONE;
    out->num_params = 2;
    return AddSlider(call);
}

void Commit(const Misdeed& entry, Host& host) {
    misdeed = &entry;
    Effect effect(host, MisbehavingEffect);
    ASSERT_TRUE(effect.paramsSetup().ok());
    Instance instance(effect);
    World input(PF_PixelFormat_ARGB64, 6, 4, {10, 2, true, true, 3});
    World output(PF_PixelFormat_ARGB64, 6, 4, {0, 0, false, true, 5});
    if (entry.cmd == PF_Cmd_RENDER) instance.render(input, output);
    if (entry.cmd != PF_Cmd_RENDER) SmartRender(instance, input, output);
}

TEST(HostTest, MisdeedsAreNoted) {
    for (const Misdeed& entry : misdeeds) {
        WatchedHost host;
        host.watchesInputs = true;
        Commit(entry, host);
        const std::string complaints = host.accounts.complaints();
        EXPECT_NE(complaints.find(entry.complaint), std::string::npos)
            << entry.complaint << " is not in:\n"
            << complaints;
        Host unwatched;
        Commit(entry, unwatched);
    }
}

}  // namespace
}  // namespace host_kit
