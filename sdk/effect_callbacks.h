// The host's callbacks that come with every command.
#pragma once

#include "sdk/effect_params.h"

// What get_platform_data is asked for.
inline constexpr A_long PF_PlatData_MAIN_WND = 0;       // the main window's handle
inline constexpr A_long PF_PlatData_RES_FILE_PATH = 2;  // the effect's own file, at most 260 chars
inline constexpr std::size_t PF_MAX_PATH_LEN = 260;

/// Parameters: their declaration, and their values at any time of the composition.
struct PF_InteractCallbacks {
    PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
                             A_long time_step, A_u_long time_scale, PF_ParamDef* param);
    PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
    PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDef* def);
    void* unused_callbacks[6];
    void* reserved_str[3];
    void* reserved[10];
};
NEVREL_CHECK_RECORD(PF_InteractCallbacks, 176, 8);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, checkout_param, 0);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, checkin_param, 8);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, add_param, 16);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, unused_callbacks, 24);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, reserved_str, 72);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, reserved, 96);

/// The host's C library, inside PF_UtilCallbacks.
struct PF_ANSICallbacksBlock {
    void* unused_math[15];
    int (*sprintf)(char* dst, const char* format, ...);
    char* (*strcpy)(char* dst, const char* src);
    void* asin;
    void* acos;
    A_long unused_longA[1];
};
NEVREL_CHECK_RECORD(PF_ANSICallbacksBlock, 160, 8);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, unused_math, 0);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, sprintf, 120);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, strcpy, 128);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, asin, 136);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, acos, 144);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, unused_longA, 152);

/// Everything else that needs no suite. get_pixel_data8 and get_pixel_data16 give a null pixel for
/// a world of another depth.
struct PF_UtilCallbacks {
    void* unused_callbacks[26];
    PF_ANSICallbacksBlock ansi;
    void* unused_color_callbacks[8];
    PF_Err (*get_platform_data)(PF_ProgPtr effect_ref, A_long which, void* data);
    void* unused_later_callbacks[11];
    PF_Err (*get_pixel_data8)(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel** pixel);
    PF_Err (*get_pixel_data16)(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel16** pixel);
    A_long reserved[1];
};
NEVREL_CHECK_RECORD(PF_UtilCallbacks, 552, 8);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, unused_callbacks, 0);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, ansi, 208);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, unused_color_callbacks, 368);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, get_platform_data, 432);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, unused_later_callbacks, 440);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, get_pixel_data8, 528);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, get_pixel_data16, 536);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, reserved, 544);
