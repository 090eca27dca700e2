#include "host_kit/callbacks.h"

#include <cstring>
#include <vector>

#include "host_kit/command.h"
#include "host_kit/frame.h"

namespace host_kit {
namespace {

// Parameters

PF_Err CheckoutParam(PF_ProgPtr effectRef, PF_ParamIndex index, A_long whatTime, A_long timeStep,
                     A_u_long timeScale, PF_ParamDef* param) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || param == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CheckoutParam, index);
    if (verdict.fault) return verdict.result();
    const bool known = index >= 0 && static_cast<std::size_t>(index) < command->values.size();
    if (!command->allows(known, "check-out of a parameter that there is not"))
        return PF_Err_BAD_CALLBACK_PARAM;
    const PF_InData& in = command->inData;
    command->expect(
        whatTime == in.current_time && timeStep == in.time_step && timeScale == in.time_scale,
        "check-out of a parameter at another time");
    *param = command->values[static_cast<std::size_t>(index)];
    command->lend(LoanKind::Parameter, param, index);
    return PF_Err_NONE;
}

PF_Err CheckinParam(PF_ProgPtr effectRef, PF_ParamDef* param) {
    Command* command = Command::of(effectRef);
    if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CheckinParam);
    command->giveBack(LoanKind::Parameter, param);
    return verdict.result();
}

PF_Err AddParam(PF_ProgPtr effectRef, PF_ParamIndex index, PF_ParamDef* def) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || def == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::AddParam, def->uu.id);
    if (verdict.fault) return verdict.result();
    std::vector<PF_ParamDef>* declaration = index == -1 ? command->declaration : nullptr;
    if (declaration == nullptr) {
        command->violation("declaration of a parameter out of turn");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    declaration->push_back(*def);
    return PF_Err_NONE;
}

// Utilities

PF_Err GetPlatformData(PF_ProgPtr effectRef, A_long which, void* data) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || data == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::GetPlatformData, which);
    if (verdict.fault) return verdict.result();
    const HostIdentity& identity = command->host.identity;
    if (which == PF_PlatData_MAIN_WND) {
        std::memcpy(data, &identity.mainWindow, sizeof identity.mainWindow);
        return PF_Err_NONE;
    }
    if (which != PF_PlatData_RES_FILE_PATH || identity.pluginPath.size() >= PF_MAX_PATH_LEN) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    std::memcpy(data, identity.pluginPath.c_str(), identity.pluginPath.size() + 1);
    return PF_Err_NONE;
}

template <typename Pixel>
PF_Err GetPixelData(HostCall call, PF_PixelFormat format, const PF_EffectWorld* record,
                    PF_PixelPtr pixels, Pixel** pixel) {
    Command& command = Command::current();
    const CallVerdict verdict = command.enter(call);
    if (pixel == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    *pixel = nullptr;
    if (verdict.fault) return verdict.result();
    const World* world = command.find(record);
    if (world == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    void* data = pixels == nullptr ? record->data : static_cast<void*>(pixels);
    if (world->format() == format) *pixel = static_cast<Pixel*>(data);
    return PF_Err_NONE;
}

PF_Err GetPixelData8(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel** pixel) {
    return GetPixelData(HostCall::GetPixelData8, PF_PixelFormat_ARGB32, world, pixels, pixel);
}

PF_Err GetPixelData16(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel16** pixel) {
    return GetPixelData(HostCall::GetPixelData16, PF_PixelFormat_ARGB64, world, pixels, pixel);
}

PF_UtilCallbacks MakeUtilCallbacks() {
    PF_UtilCallbacks callbacks{};
    callbacks.ansi.sprintf = Sprintf;
    callbacks.ansi.strcpy = Strcpy;
    callbacks.get_platform_data = GetPlatformData;
    callbacks.get_pixel_data8 = GetPixelData8;
    callbacks.get_pixel_data16 = GetPixelData16;
    return callbacks;
}

// Smart rendering

/// The frame that the command works on; null, which is a violation, in any other command.
Frame* FrameOf(const Command& command, PF_Cmd selector, const char* what) {
    const bool inTurn = command.selector == selector && command.frame != nullptr;
    return command.allows(inTurn, what) ? command.frame : nullptr;
}

PF_Err CheckoutLayer(PF_ProgPtr effectRef, PF_ParamIndex index, A_long checkoutId,
                     const PF_RenderRequest* request, A_long whatTime, A_long timeStep,
                     A_u_long timeScale, PF_CheckoutResult* result) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || request == nullptr || result == nullptr)
        return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CheckoutLayer, index);
    if (verdict.fault) return verdict.result();
    const PF_InData& in = command->inData;
    command->expect(
        whatTime == in.current_time && timeStep == in.time_step && timeScale == in.time_scale,
        "check-out of a layer at another time");
    Frame* frame = FrameOf(*command, PF_Cmd_SMART_PRE_RENDER, "check-out of a layer out of turn");
    const bool granted =
        frame != nullptr && index == 0 && frame->requestLayer(checkoutId, *request, *result);
    return granted ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err CheckoutLayerPixels(PF_ProgPtr effectRef, A_long checkoutId, PF_EffectWorld** pixels) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || pixels == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CheckoutLayerPixels, checkoutId);
    *pixels = nullptr;
    if (verdict.fault) return verdict.result();
    Frame* frame = FrameOf(*command, PF_Cmd_SMART_RENDER, "check-out of pixels out of turn");
    PF_EffectWorld* layer = frame == nullptr ? nullptr : frame->checkOut(checkoutId);
    if (!command->allows(layer != nullptr,
                         "check-out of pixels that were not asked for or are out already")) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    command->lend(LoanKind::Layer, layer, checkoutId);
    *pixels = layer;
    return PF_Err_NONE;
}

PF_Err CheckinLayerPixels(PF_ProgPtr effectRef, A_long checkoutId) {
    Command* command = Command::of(effectRef);
    if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CheckinLayerPixels, checkoutId);
    Frame* frame = FrameOf(*command, PF_Cmd_SMART_RENDER, "check-in of pixels out of turn");
    const PF_EffectWorld* layer = frame == nullptr ? nullptr : frame->checkIn(checkoutId);
    if (!command->allows(layer != nullptr, "check-in of pixels that are not out"))
        return PF_Err_BAD_CALLBACK_PARAM;
    command->giveBack(LoanKind::Layer, layer);
    return verdict.result();
}

PF_Err CheckoutOutput(PF_ProgPtr effectRef, PF_EffectWorld** output) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || output == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CheckoutOutput);
    *output = nullptr;
    if (verdict.fault) return verdict.result();
    Frame* frame = FrameOf(*command, PF_Cmd_SMART_RENDER, "check-out of the output out of turn");
    if (frame == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    *output = frame->outputRecord();
    return PF_Err_NONE;
}

}  // namespace

PF_InteractCallbacks InteractCallbacks() {
    PF_InteractCallbacks callbacks{};
    callbacks.checkout_param = CheckoutParam;
    callbacks.checkin_param = CheckinParam;
    callbacks.add_param = AddParam;
    return callbacks;
}

PF_UtilCallbacks* UtilCallbacks() {
    static PF_UtilCallbacks callbacks = MakeUtilCallbacks();
    return &callbacks;
}

PF_PreRenderCallbacks PreRenderCallbacks() { return {CheckoutLayer, nullptr}; }

PF_SmartRenderCallbacks SmartRenderCallbacks() {
    return {CheckoutLayerPixels, CheckinLayerPixels, CheckoutOutput};
}

}  // namespace host_kit
