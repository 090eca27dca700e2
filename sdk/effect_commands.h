// The host's commands, and what an effect tells it about itself.
#pragma once

#include "sdk/effect_data.h"

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
inline constexpr PF_Cmd PF_Cmd_GET_FLATTENED_SEQUENCE_DATA = 28;

inline constexpr A_long PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 0x10;
inline constexpr A_long PF_OutFlag_I_DO_DIALOG = 0x20;
inline constexpr A_long PF_OutFlag_DISPLAY_ERROR_MESSAGE = 0x100;
inline constexpr A_long PF_OutFlag_DEEP_COLOR_AWARE = 0x2000000;
inline constexpr A_long PF_OutFlag_SEND_UPDATE_PARAMS_UI = 0x4000000;

inline constexpr A_long PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 0x8;
inline constexpr A_long PF_OutFlag2_I_AM_THREADSAFE = 0x10;
inline constexpr A_long PF_OutFlag2_SUPPORTS_SMART_RENDER = 0x400;
inline constexpr A_long PF_OutFlag2_FLOAT_COLOR_AWARE = 0x1000;
inline constexpr A_long PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA = 0x800000;
inline constexpr A_long PF_OutFlag2_SUPPORTS_THREADED_RENDERING = 0x8000000;

inline constexpr A_long PF_Stage_RELEASE = 3;

/// The module's one export.
using PF_EntryPoint = PF_Err (*)(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                 PF_ParamDef* params[], PF_LayerDef* output, void* extra);
