// What the host's books and checks notice, and that a host without books stays sound as well. That
// they stay balanced with an effect that behaves, and what every fault does to one, is for the
// tests of the module.
#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "host_kit/books/watched_host.h"
#include "host_kit/frame.h"

namespace host_kit {
namespace {

/// Acquires a suite.
template <typename Suite>
const Suite& Acquire(PF_InData* in, const char* name, A_long version) {
    const void* suite = nullptr;
    in->pica_basicP->AcquireSuite(name, version, &suite);
    return *static_cast<const Suite*>(suite);
}

PF_Err AddSlider(PF_InData* in) {
    PF_ParamDef def{};
    def.uu.id = 5;
    def.param_type = PF_Param_SLIDER;
    return in->inter.add_param(in->effect_ref, -1, &def);
}

void Misuse(PF_InData* in, PF_ParamDef* params[], PF_LayerDef* output) {
    in->pica_basicP->ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion1);

    const auto& handles = Acquire<PF_HandleSuite1>(in, kPFHandleSuite, kPFHandleSuiteVersion1);
    PF_Handle handle = handles.host_new_handle(8);
    handles.host_unlock_handle(handle);
    auto* bytes = static_cast<char*>(handles.host_lock_handle(handle));
    handles.host_dispose_handle(handle);
    *bytes = 1;
    handles.host_unlock_handle(handle);
    handles.host_dispose_handle(handle);
    handles.host_lock_handle(handle);

    Acquire<PF_WorldSuite1>(in, kPFWorldSuite, kPFWorldSuiteVersion1)
        .dispose_world(in->effect_ref, output);
    static_cast<char*>(output->data)[0] = 1;

    PF_ParamDef def{};
    in->inter.checkin_param(in->effect_ref, params[1]);
    in->inter.checkout_param(in->effect_ref, 2, 0, 1, 24, &def);
    AddSlider(in);
    in->inter.checkin_param(nullptr, params[1]);

    PF_EffectWorld stranger{};
    PF_Pixel* pixel = nullptr;
    in->utils->get_pixel_data8(&stranger, nullptr, &pixel);

    in->quality = 0;
    params[1]->u.sd.value = 1;
    static_cast<char*>(params[0]->u.ld.data)[0] ^= 1;
    static_cast<char*>(output->data)[-1] ^= 1;
}

constexpr char complaintsOfMisuse[] = R"(outstanding: suite PF Handle Suite 2 of command 11
outstanding: suite PF World Suite 1 of command 11
suite given back that was not lent in command 11
unlock of a handle that is not locked in command 11
disposal of a handle that is locked or none in command 11
lock of a handle that is none in command 11
disposal of no scratch image in command 11
parameter given back that was not lent in command 11
check-out of a parameter that there is not in command 11
declaration of a parameter out of turn in command 11
foreign effect_ref in command 11
an image that this command was not lent in command 11
wrote to the input record in command 11
wrote to the parameter array in command 11
wrote to the input image in command 11
wrote outside an image in command 11
not given back: suite PF Handle Suite 2 of command 11
not given back: suite PF World Suite 1 of command 11
)";

void MisusePreRender(PF_InData* in, const PF_PreRenderExtra& extra) {
    PF_CheckoutResult result;
    extra.cb->checkout_layer(in->effect_ref, 0, 0, &extra.input->output_request, 0, 1, 24, &result);
    extra.output->pre_render_data =
        Acquire<PF_HandleSuite1>(in, kPFHandleSuite, kPFHandleSuiteVersion1).host_new_handle(8);
}

void MisuseLayers(PF_InData* in, const PF_SmartRenderCallbacks& host) {
    PF_EffectWorld* layer = nullptr;
    for (const A_long id : {3, 0, 0}) host.checkout_layer_pixels(in->effect_ref, id, &layer);
    for (int i = 0; i < 2; ++i) host.checkin_layer_pixels(in->effect_ref, 0);
}

constexpr char complaintsOfSmartMisuse[] =
    R"(outstanding: suite PF Handle Suite 2 of command 23
pre-render data without a delete function in command 23
not given back: suite PF Handle Suite 2 of command 23
check-out of pixels that were not asked for or are out already in command 24
check-out of pixels that were not asked for or are out already in command 24
check-in of pixels that are not out in command 24
)";

/// Declares a slider, and misuses its host from then on.
PF_Err MisbehavingEffect(PF_Cmd cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[],
                         PF_LayerDef* output, void* extra) {
    if (cmd == PF_Cmd_RENDER) Misuse(in, params, output);
    if (cmd == PF_Cmd_SMART_PRE_RENDER)
        MisusePreRender(in, *static_cast<PF_PreRenderExtra*>(extra));
    if (cmd == PF_Cmd_SMART_RENDER) MisuseLayers(in, *static_cast<PF_SmartRenderExtra*>(extra)->cb);
    if (cmd != PF_Cmd_PARAMS_SETUP) return PF_Err_NONE;
    out->num_params = 2;
    return AddSlider(in);
}

void Suffer(Host& host, bool smart) {
    Effect effect(host, MisbehavingEffect);
    ASSERT_TRUE(effect.paramsSetup().ok());
    Instance instance(effect);
    World input(PF_PixelFormat_ARGB64, 6, 4, {10, 2, true, true, 3});
    World output(PF_PixelFormat_ARGB64, 6, 4, {0, 0, false, true, 5});
    EXPECT_TRUE(
        (smart ? SmartRender(instance, input, output) : instance.render(input, output)).ok());
}

TEST(HostTest, MisuseIsNoted) {
    for (const bool smart : {false, true}) {
        WatchedHost host;
        host.watchesInputs = true;
        Suffer(host, smart);
        EXPECT_EQ(
            std::regex_replace(host.accounts.complaints(), std::regex(" \\(number .*\\)"), ""),
            smart ? complaintsOfSmartMisuse : complaintsOfMisuse);
        Host unwatched;
        Suffer(unwatched, smart);
    }
}

TEST(HostTest, RowPitchBeyond31BitsIsRefused) {
    EXPECT_THROW(World(PF_PixelFormat_ARGB128, 1 << 27, 1), std::bad_alloc);
}

}  // namespace
}  // namespace host_kit
