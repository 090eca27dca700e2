// The host's commands and the records that come with them.
#pragma once

#include "sdk/effect_params.h"

struct SPBasicSuite;

inline constexpr PF_Cmd PF_Cmd_ABOUT = 0;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETUP = 1;
inline constexpr PF_Cmd PF_Cmd_PARAMS_SETUP = 4;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETUP = 5;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_RESETUP = 6;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_FLATTEN = 7;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETDOWN = 8;
inline constexpr PF_Cmd PF_Cmd_DO_DIALOG = 9;
inline constexpr PF_Cmd PF_Cmd_RENDER = 11;
inline constexpr PF_Cmd PF_Cmd_USER_CHANGED_PARAM = 13;
inline constexpr PF_Cmd PF_Cmd_UPDATE_PARAMS_UI = 14;
inline constexpr PF_Cmd PF_Cmd_SMART_PRE_RENDER = 23;
inline constexpr PF_Cmd PF_Cmd_SMART_RENDER = 24;

inline constexpr A_long PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 0x10;
inline constexpr A_long PF_OutFlag_I_DO_DIALOG = 0x20;
inline constexpr A_long PF_OutFlag_DISPLAY_ERROR_MESSAGE = 0x100;
inline constexpr A_long PF_OutFlag_DEEP_COLOR_AWARE = 0x2000000;
inline constexpr A_long PF_OutFlag_SEND_UPDATE_PARAMS_UI = 0x4000000;

inline constexpr A_long PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 0x8;
inline constexpr A_long PF_OutFlag2_I_AM_THREADSAFE = 0x10;
inline constexpr A_long PF_OutFlag2_SUPPORTS_SMART_RENDER = 0x400;
inline constexpr A_long PF_OutFlag2_FLOAT_COLOR_AWARE = 0x1000;

inline constexpr A_long PF_Stage_RELEASE = 3;

// What get_platform_data is asked for.
inline constexpr A_long PF_PlatData_MAIN_WND = 0;            // the main window's handle
inline constexpr A_long PF_PlatData_RES_FILE_PATH = 2;       // the effect's own file, a path of at most 260 chars
inline constexpr std::size_t PF_MAX_PATH_LEN = 260;

struct PF_InteractCallbacks {
    PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time, A_long time_step,
                             A_u_long time_scale, PF_ParamDef* param);
    PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
    PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDef* def);
    void* unused_callbacks[6];
    void* reserved_str[3];
    void* reserved[10];
};
NEVREL_CHECK_RECORD(PF_InteractCallbacks, 176, 8);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, checkin_param, 8);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, add_param, 16);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, reserved_str, 72);
NEVREL_CHECK_FIELD(PF_InteractCallbacks, reserved, 96);

struct PF_ANSICallbacksBlock {
    void* unused_math[15];
    int (*sprintf)(char* dst, const char* format, ...);
    char* (*strcpy)(char* dst, const char* src);
    void* asin;
    void* acos;
    A_long unused_longA[1];
};
NEVREL_CHECK_RECORD(PF_ANSICallbacksBlock, 160, 8);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, sprintf, 120);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, strcpy, 128);
NEVREL_CHECK_FIELD(PF_ANSICallbacksBlock, unused_longA, 152);

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
NEVREL_CHECK_FIELD(PF_UtilCallbacks, ansi, 208);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, unused_color_callbacks, 368);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, get_platform_data, 432);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, get_pixel_data8, 528);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, get_pixel_data16, 536);
NEVREL_CHECK_FIELD(PF_UtilCallbacks, reserved, 544);

/// Declared for its size only: the effect has no sound.
struct PF_SoundWorld {
    void* reserved[4];
};
NEVREL_CHECK_RECORD(PF_SoundWorld, 32, 8);

struct PF_InData {
    PF_InteractCallbacks inter;
    PF_UtilCallbacks* utils;
    PF_ProgPtr effect_ref;
    A_long quality;
    PF_SpecVersion version;
    A_long serial_num;
    A_long appl_id;
    A_long num_params;
    A_long reserved;
    A_long what_cpu;
    A_long what_fpu;
    A_long current_time;
    A_long time_step;
    A_long total_time;
    A_long local_time_step;
    A_u_long time_scale;
    A_long field;
    A_long shutter_angle;
    A_long width;
    A_long height;
    PF_LRect extent_hint;
    A_long output_origin_x;
    A_long output_origin_y;
    PF_RationalScale downsample_x;
    PF_RationalScale downsample_y;
    PF_RationalScale pixel_aspect_ratio;
    A_long in_flags;
    PF_Handle global_data;
    PF_Handle sequence_data;
    PF_Handle frame_data;
    A_long start_sampL;
    A_long dur_sampL;
    A_long total_sampL;
    PF_SoundWorld src_snd;
    SPBasicSuite* pica_basicP;
    A_long pre_effect_source_origin_x;
    A_long pre_effect_source_origin_y;
    A_long shutter_phase;
};
NEVREL_CHECK_RECORD(PF_InData, 408, 8);
NEVREL_CHECK_FIELD(PF_InData, utils, 176);
NEVREL_CHECK_FIELD(PF_InData, effect_ref, 184);
NEVREL_CHECK_FIELD(PF_InData, version, 196);
NEVREL_CHECK_FIELD(PF_InData, appl_id, 204);
NEVREL_CHECK_FIELD(PF_InData, num_params, 208);
NEVREL_CHECK_FIELD(PF_InData, current_time, 224);
NEVREL_CHECK_FIELD(PF_InData, time_step, 228);
NEVREL_CHECK_FIELD(PF_InData, time_scale, 240);
NEVREL_CHECK_FIELD(PF_InData, width, 252);
NEVREL_CHECK_FIELD(PF_InData, extent_hint, 260);
NEVREL_CHECK_FIELD(PF_InData, downsample_x, 284);
NEVREL_CHECK_FIELD(PF_InData, in_flags, 308);
NEVREL_CHECK_FIELD(PF_InData, global_data, 312);
NEVREL_CHECK_FIELD(PF_InData, sequence_data, 320);
NEVREL_CHECK_FIELD(PF_InData, start_sampL, 336);
NEVREL_CHECK_FIELD(PF_InData, src_snd, 352);
NEVREL_CHECK_FIELD(PF_InData, pica_basicP, 384);
NEVREL_CHECK_FIELD(PF_InData, shutter_phase, 400);

struct PF_OutData {
    A_u_long my_version;
    A_char name[32];
    PF_Handle global_data;
    A_long num_params;
    PF_Handle sequence_data;
    A_long flat_sdata_size;
    PF_Handle frame_data;
    A_long width;
    A_long height;
    PF_Point origin;
    A_long out_flags;
    A_char return_msg[256];
    A_long start_sampL;
    A_long dur_sampL;
    PF_SoundWorld dest_snd;
    A_long out_flags2;
};
NEVREL_CHECK_RECORD(PF_OutData, 408, 8);
NEVREL_CHECK_FIELD(PF_OutData, my_version, 0);
NEVREL_CHECK_FIELD(PF_OutData, name, 4);
NEVREL_CHECK_FIELD(PF_OutData, global_data, 40);
NEVREL_CHECK_FIELD(PF_OutData, num_params, 48);
NEVREL_CHECK_FIELD(PF_OutData, sequence_data, 56);
NEVREL_CHECK_FIELD(PF_OutData, out_flags, 96);
NEVREL_CHECK_FIELD(PF_OutData, return_msg, 100);
NEVREL_CHECK_FIELD(PF_OutData, dest_snd, 368);
NEVREL_CHECK_FIELD(PF_OutData, out_flags2, 400);

/// The module's one export.
using PF_EntryPoint = PF_Err (*)(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                                 PF_LayerDef* output, void* extra);
