// The host's parameter definitions.
#pragma once

#include "sdk/effect_world.h"

inline constexpr PF_ParamType PF_Param_LAYER = 0;
inline constexpr PF_ParamType PF_Param_SLIDER = 1;
inline constexpr PF_ParamType PF_Param_CHECKBOX = 4;
inline constexpr PF_ParamType PF_Param_COLOR = 5;
inline constexpr PF_ParamType PF_Param_GROUP_START = 13;
inline constexpr PF_ParamType PF_Param_GROUP_END = 14;

inline constexpr A_long PF_ParamFlag_START_COLLAPSED = 0x20;
inline constexpr A_long PF_ParamFlag_SUPERVISE = 0x40;

inline constexpr A_long PF_PUI_ECW_SEPARATOR = 0x10;
inline constexpr A_long PF_PUI_DISABLED = 0x20;

/// An integer slider: `valid` limits the value, `slider` the range of its scale.
struct PF_SliderDef {
    A_long value;
    A_char value_str[32];
    A_char value_desc[32];
    A_long valid_min;
    A_long valid_max;
    A_long slider_min;
    A_long slider_max;
    A_long dephault;
};
NEVREL_CHECK_RECORD(PF_SliderDef, 88, 4);
NEVREL_CHECK_FIELD(PF_SliderDef, value, 0);
NEVREL_CHECK_FIELD(PF_SliderDef, value_str, 4);
NEVREL_CHECK_FIELD(PF_SliderDef, value_desc, 36);
NEVREL_CHECK_FIELD(PF_SliderDef, valid_min, 68);
NEVREL_CHECK_FIELD(PF_SliderDef, valid_max, 72);
NEVREL_CHECK_FIELD(PF_SliderDef, slider_min, 76);
NEVREL_CHECK_FIELD(PF_SliderDef, slider_max, 80);
NEVREL_CHECK_FIELD(PF_SliderDef, dephault, 84);

/// A checkbox; its value is 0 or 1, `nameptr` the label beside the box.
struct PF_CheckBoxDef {
    A_long value;
    A_char dephault;
    A_char reserved;
    A_short reserved1;
    union {
        const char* nameptr;
    } u;
};
NEVREL_CHECK_RECORD(PF_CheckBoxDef, 16, 8);
NEVREL_CHECK_FIELD(PF_CheckBoxDef, value, 0);
NEVREL_CHECK_FIELD(PF_CheckBoxDef, dephault, 4);
NEVREL_CHECK_FIELD(PF_CheckBoxDef, reserved, 5);
NEVREL_CHECK_FIELD(PF_CheckBoxDef, reserved1, 6);
NEVREL_CHECK_FIELD(PF_CheckBoxDef, u, 8);

/// A colour, 8 bits a channel.
struct PF_ColorDef {
    PF_Pixel value;
    PF_Pixel dephault;
};
NEVREL_CHECK_RECORD(PF_ColorDef, 8, 1);
NEVREL_CHECK_FIELD(PF_ColorDef, value, 0);
NEVREL_CHECK_FIELD(PF_ColorDef, dephault, 4);

/// The members that the effect uses; the layer record is the largest of the host's union.
union PF_ParamDefUnion {
    PF_LayerDef ld;
    PF_SliderDef sd;
    PF_CheckBoxDef bd;
    PF_ColorDef cd;
};
NEVREL_CHECK_RECORD(PF_ParamDefUnion, 120, 8);

/// A parameter: its declaration and, in the array that comes with a command, its value at that
/// time.
struct PF_ParamDef {
    union {
        A_long id;
        A_long change_flags;
    } uu;
    A_long ui_flags;
    A_short ui_width;
    A_short ui_height;
    PF_ParamType param_type;
    A_char name[32];
    A_long flags;
    A_long unused;
    PF_ParamDefUnion u;
};
NEVREL_CHECK_RECORD(PF_ParamDef, 176, 8);
NEVREL_CHECK_FIELD(PF_ParamDef, uu, 0);
NEVREL_CHECK_FIELD(PF_ParamDef, ui_flags, 4);
NEVREL_CHECK_FIELD(PF_ParamDef, ui_width, 8);
NEVREL_CHECK_FIELD(PF_ParamDef, ui_height, 10);
NEVREL_CHECK_FIELD(PF_ParamDef, param_type, 12);
NEVREL_CHECK_FIELD(PF_ParamDef, name, 16);
NEVREL_CHECK_FIELD(PF_ParamDef, flags, 48);
NEVREL_CHECK_FIELD(PF_ParamDef, unused, 52);
NEVREL_CHECK_FIELD(PF_ParamDef, u, 56);
