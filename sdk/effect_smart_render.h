// The extra records of the host's smart-render pair.
#pragma once

#include "sdk/effect_world.h"

/// The area and the channels that are asked for.
struct PF_RenderRequest {
    PF_LRect rect;
    A_long field;
    A_long channel_mask;
    PF_Boolean preserve_rgb_of_zero_alpha;
    A_char unused[3];
    A_long reserved[4];
};
NEVREL_CHECK_RECORD(PF_RenderRequest, 44, 4);
NEVREL_CHECK_FIELD(PF_RenderRequest, rect, 0);
NEVREL_CHECK_FIELD(PF_RenderRequest, field, 16);
NEVREL_CHECK_FIELD(PF_RenderRequest, channel_mask, 20);
NEVREL_CHECK_FIELD(PF_RenderRequest, preserve_rgb_of_zero_alpha, 24);
NEVREL_CHECK_FIELD(PF_RenderRequest, unused, 25);
NEVREL_CHECK_FIELD(PF_RenderRequest, reserved, 28);

/// The area that a layer gives of what was asked for, and the most that it could give.
struct PF_CheckoutResult {
    PF_LRect result_rect;
    PF_LRect max_result_rect;
    PF_RationalScale par;
    A_char solid;
    A_char reservedB[3];
    A_long ref_width;
    A_long ref_height;
    A_long reserved[6];
};
NEVREL_CHECK_RECORD(PF_CheckoutResult, 76, 4);
NEVREL_CHECK_FIELD(PF_CheckoutResult, result_rect, 0);
NEVREL_CHECK_FIELD(PF_CheckoutResult, max_result_rect, 16);
NEVREL_CHECK_FIELD(PF_CheckoutResult, par, 32);
NEVREL_CHECK_FIELD(PF_CheckoutResult, solid, 40);
NEVREL_CHECK_FIELD(PF_CheckoutResult, reservedB, 41);
NEVREL_CHECK_FIELD(PF_CheckoutResult, ref_width, 44);
NEVREL_CHECK_FIELD(PF_CheckoutResult, ref_height, 48);
NEVREL_CHECK_FIELD(PF_CheckoutResult, reserved, 52);

/// What the host wants of the effect.
struct PF_PreRenderInput {
    PF_RenderRequest output_request;
    A_short bitdepth;
    const void* gpu_data;
    A_long what_gpu;
    A_u_long device_index;
};
NEVREL_CHECK_RECORD(PF_PreRenderInput, 64, 8);
NEVREL_CHECK_FIELD(PF_PreRenderInput, output_request, 0);
NEVREL_CHECK_FIELD(PF_PreRenderInput, bitdepth, 44);
NEVREL_CHECK_FIELD(PF_PreRenderInput, gpu_data, 48);
NEVREL_CHECK_FIELD(PF_PreRenderInput, what_gpu, 56);
NEVREL_CHECK_FIELD(PF_PreRenderInput, device_index, 60);

/// What the effect will give. The host keeps `pre_render_data` for the render command and calls the
/// delete function with it in the end.
struct PF_PreRenderOutput {
    PF_LRect result_rect;
    PF_LRect max_result_rect;
    A_char solid;
    A_char reserved;
    A_short flags;
    void* pre_render_data;
    void (*delete_pre_render_data_func)(void* pre_render_data);
};
NEVREL_CHECK_RECORD(PF_PreRenderOutput, 56, 8);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, result_rect, 0);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, max_result_rect, 16);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, solid, 32);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, reserved, 33);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, flags, 34);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, pre_render_data, 40);
NEVREL_CHECK_FIELD(PF_PreRenderOutput, delete_pre_render_data_func, 48);

/// Asks for the area of a layer; its pixels are checked out under the same id when they are
/// rendered.
struct PF_PreRenderCallbacks {
    PF_Err (*checkout_layer)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long checkout_id,
                             const PF_RenderRequest* request, A_long what_time, A_long time_step,
                             A_u_long time_scale, PF_CheckoutResult* result);
    void* GuidMixInPtr;
};
NEVREL_CHECK_RECORD(PF_PreRenderCallbacks, 16, 8);
NEVREL_CHECK_FIELD(PF_PreRenderCallbacks, checkout_layer, 0);
NEVREL_CHECK_FIELD(PF_PreRenderCallbacks, GuidMixInPtr, 8);

/// The extra record of PF_Cmd_SMART_PRE_RENDER.
struct PF_PreRenderExtra {
    PF_PreRenderInput* input;
    PF_PreRenderOutput* output;
    PF_PreRenderCallbacks* cb;
};
NEVREL_CHECK_RECORD(PF_PreRenderExtra, 24, 8);
NEVREL_CHECK_FIELD(PF_PreRenderExtra, input, 0);
NEVREL_CHECK_FIELD(PF_PreRenderExtra, output, 8);
NEVREL_CHECK_FIELD(PF_PreRenderExtra, cb, 16);

/// What the host wants rendered, with the data that pre-render left.
struct PF_SmartRenderInput {
    PF_RenderRequest output_request;
    A_short bitdepth;
    void* pre_render_data;
    const void* gpu_data;
    A_long what_gpu;
    A_u_long device_index;
};
NEVREL_CHECK_RECORD(PF_SmartRenderInput, 72, 8);
NEVREL_CHECK_FIELD(PF_SmartRenderInput, output_request, 0);
NEVREL_CHECK_FIELD(PF_SmartRenderInput, bitdepth, 44);
NEVREL_CHECK_FIELD(PF_SmartRenderInput, pre_render_data, 48);
NEVREL_CHECK_FIELD(PF_SmartRenderInput, gpu_data, 56);
NEVREL_CHECK_FIELD(PF_SmartRenderInput, what_gpu, 64);
NEVREL_CHECK_FIELD(PF_SmartRenderInput, device_index, 68);

/// Lends the images of one render command.
struct PF_SmartRenderCallbacks {
    PF_Err (*checkout_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_id,
                                    PF_EffectWorld** pixels);
    PF_Err (*checkin_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_id);
    PF_Err (*checkout_output)(PF_ProgPtr effect_ref, PF_EffectWorld** output);
};
NEVREL_CHECK_RECORD(PF_SmartRenderCallbacks, 24, 8);
NEVREL_CHECK_FIELD(PF_SmartRenderCallbacks, checkout_layer_pixels, 0);
NEVREL_CHECK_FIELD(PF_SmartRenderCallbacks, checkin_layer_pixels, 8);
NEVREL_CHECK_FIELD(PF_SmartRenderCallbacks, checkout_output, 16);

/// The extra record of PF_Cmd_SMART_RENDER.
struct PF_SmartRenderExtra {
    PF_SmartRenderInput* input;
    PF_SmartRenderCallbacks* cb;
};
NEVREL_CHECK_RECORD(PF_SmartRenderExtra, 16, 8);
NEVREL_CHECK_FIELD(PF_SmartRenderExtra, input, 0);
NEVREL_CHECK_FIELD(PF_SmartRenderExtra, cb, 8);
