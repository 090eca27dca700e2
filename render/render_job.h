// One render call: what to render, with which values, from where to where.
#pragma once

#include "kernel/effect_values.h"
#include "sdk/effect_api.h"

/// Built on the render command's stack; lives for one call. The kernels keep and free nothing in
/// it.
struct RenderJob : EffectValues {
    PF_InData* inData;  ///< its effect_ref and pica_basicP are used
    PF_PixelFormat
        pixelFormat;  ///< format of both images; PF_PixelFormat_INVALID until it is known
    PF_EffectWorld* inputWorld;   ///< read only
    PF_EffectWorld* outputWorld;  ///< same size as the input
};
