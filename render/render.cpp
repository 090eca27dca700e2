#include <cassert>

#include "host/suite_handler.h"
#include "render/dispatch_kernel.h"
#include "render/param_index_map.h"
#include "render/param_values.h"
#include "render/render_commands.h"

namespace {

/// Whether both images are of the depth that `getPixelData` tells; the host's code when it fails.
template <typename Pixel>
PF_Err ProbeDepth(PF_Err (*getPixelData)(PF_EffectWorld*, PF_PixelPtr, Pixel**),
                  const RenderJob& job, bool& both) {
    both = true;
    for (PF_EffectWorld* world : {job.inputWorld, job.outputWorld}) {
        Pixel* pixel = nullptr;
        const PF_Err code = getPixelData(world, static_cast<PF_PixelPtr>(world->data), &pixel);
        if (code != PF_Err_NONE) return code;
        both = both && pixel != nullptr;
    }
    return PF_Err_NONE;
}

/// Sets the job's pixel format; leaves it when the images are of other or of different depths.
PF_Err FindPixelFormat(RenderJob& job) {
    const PF_UtilCallbacks& utils = *job.inData->utils;
    bool both = false;
    if (const PF_Err code = ProbeDepth(utils.get_pixel_data8, job, both)) return code;
    if (both) job.pixelFormat = PF_PixelFormat_ARGB32;
    if (const PF_Err code = ProbeDepth(utils.get_pixel_data16, job, both)) return code;
    if (both) job.pixelFormat = PF_PixelFormat_ARGB64;
    return PF_Err_NONE;
}

}  // namespace

PF_Err Render(PF_InData* inData, PF_OutData* /*outData*/, PF_ParamDef* params[],
              PF_LayerDef* output) {
    assert(inData != nullptr && params != nullptr && output != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    PF_EffectWorld* input = &params[inputLayerParam]->u.ld;
    if (inData->appl_id == PF_AppID_Premiere) {
        return suites.get<PF_WorldTransformSuite1>().copy(inData->effect_ref, input, output,
                                                          nullptr, nullptr);
    }
    RenderJob job{{}, inData, PF_PixelFormat_INVALID, input, output};
    FillJobFromParams(job, params);
    if (const PF_Err code = FindPixelFormat(job)) return code;
    return DispatchKernel(job);
}
