#include <cassert>
#include <cstring>

#include "host/host_handle.h"
#include "host/suite_handler.h"
#include "render/dispatch_kernel.h"
#include "render/param_values.h"
#include "render/render_commands.h"
#include "render/smart_commands.h"

namespace {

/// The world suite that knows pixel formats, held for a scope. Unlike other suites its absence is
/// told to the user, so it is acquired apart from them.
class PixelFormatSuite {
  public:
    explicit PixelFormatSuite(SPBasicSuite& basicSuite) : basicSuite_(basicSuite) {
        const void* suite = nullptr;
        if (basicSuite_.AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion2, &suite) == 0) {
            suite_ = static_cast<const PF_WorldSuite2*>(suite);
        }
    }
    ~PixelFormatSuite() {
        if (suite_ != nullptr) basicSuite_.ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion2);
    }
    PixelFormatSuite(const PixelFormatSuite&) = delete;
    PixelFormatSuite& operator=(const PixelFormatSuite&) = delete;

    /// The suite; null when the host does not give it.
    [[nodiscard]] const PF_WorldSuite2* get() const { return suite_; }

  private:
    SPBasicSuite& basicSuite_;
    const PF_WorldSuite2* suite_ = nullptr;
};

/// Copies the values that pre-render left; false when the host cannot lock them.
bool ReadPreRenderParams(const PF_HandleSuite1& suite, void* preRenderData, EffectValues& values) {
    const HandleLock lock(suite, static_cast<PF_Handle>(preRenderData));
    if (lock.data() == nullptr) return false;
    PreRenderParams params;
    std::memcpy(&params, lock.data(), sizeof params);
    values = params;
    return true;
}

PF_Err CheckoutWorlds(const PF_SmartRenderCallbacks& host, RenderJob& job) {
    const PF_InData& in = *job.inData;
    if (const PF_Err code =
            host.checkout_layer_pixels(in.effect_ref, inputCheckoutId, &job.inputWorld))
        return code;
    if (const PF_Err code = host.checkout_output(in.effect_ref, &job.outputWorld)) return code;
    // A host that succeeds without an image has nothing to be rendered into or from. It gets no
    // text: the user is told of a missing suite alone.
    return job.inputWorld == nullptr || job.outputWorld == nullptr ? PF_Err_BAD_CALLBACK_PARAM
                                                                   : PF_Err_NONE;
}

/// Finds the pixel format of the images, which share one, and renders them.
PF_Err RenderWorlds(RenderJob& job, PF_OutData* outData) {
    const PixelFormatSuite worlds(*job.inData->pica_basicP);
    if (worlds.get() == nullptr) {
        outData->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
        job.inData->utils->ansi.sprintf(outData->return_msg, "Couldn't load suite.");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (const PF_Err code = worlds.get()->PF_GetPixelFormat(job.inputWorld, &job.pixelFormat))
        return code;
    return DispatchKernel(job);
}

}  // namespace

PF_Err SmartRender(PF_InData* inData, PF_OutData* outData, PF_SmartRenderExtra* extra) {
    assert(inData != nullptr && outData != nullptr && extra != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    RenderJob job{{}, nullptr, PF_PixelFormat_INVALID, nullptr, nullptr};
    if (!ReadPreRenderParams(suites.get<PF_HandleSuite1>(), extra->input->pre_render_data, job))
        return PF_Err_NONE;
    job.inData = inData;
    if (const PF_Err code = CheckoutWorlds(*extra->cb, job)) return code;
    if (const PF_Err code = RenderWorlds(job, outData)) return code;
    return extra->cb->checkin_layer_pixels(inData->effect_ref, inputCheckoutId);
}
