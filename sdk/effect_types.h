// The host's basic types and codes.
//
// Names and layouts are those of the host's published 64-bit effect interface. The records use
// natural alignment, which is the same on 64-bit Windows and 64-bit Linux, so one declaration
// serves both.
#pragma once

#include <cstdint>

#include "sdk/layout_check.h"

using A_char = char;
using A_u_char = std::uint8_t;
using A_short = std::int16_t;
using A_u_short = std::uint16_t;
using A_long = std::int32_t;
using A_u_long = std::uint32_t;
using A_HandleSize = std::uint64_t;

using PF_Boolean = A_char;
using PF_Err = A_long;
using PF_Cmd = A_long;
using PF_ParamType = A_long;
using PF_ParamIndex = A_long;
using PF_PixelFormat = A_u_long;
using PF_Handle = void**;
using PF_ProgPtr = struct PF_EffectInstance*;
using PF_PixelPtr = struct PF_OpaquePixels*;

/// A four-character code as the host's application ids: first character in the most significant
/// byte.
constexpr A_long PF_ApplicationCode(const char (&text)[5]) {
    A_u_long code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<A_u_char>(text[i]);
    return static_cast<A_long>(code);
}

/// A four-character code as the host's pixel formats: first character in the lowest byte.
constexpr PF_PixelFormat PF_PixelFormatCode(const char (&text)[5]) {
    PF_PixelFormat code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<A_u_char>(text[i]);
    return code;
}

inline constexpr A_long PF_AppID_AfterEffects = PF_ApplicationCode("FXTC");
inline constexpr A_long PF_AppID_Premiere = PF_ApplicationCode("PrMr");

inline constexpr PF_Err PF_Err_NONE = 0;
inline constexpr PF_Err PF_Err_OUT_OF_MEMORY = 4;
inline constexpr PF_Err PF_Err_INTERNAL_STRUCT_DAMAGED = 512;
inline constexpr PF_Err PF_Err_UNRECOGNIZED_PARAM_TYPE = 514;
inline constexpr PF_Err PF_Err_BAD_CALLBACK_PARAM = 516;

/// Pixels; right and bottom are exclusive.
struct PF_LRect {
    A_long left, top, right, bottom;
};
NEVREL_CHECK_RECORD(PF_LRect, 16, 4);
NEVREL_CHECK_FIELD(PF_LRect, left, 0);
NEVREL_CHECK_FIELD(PF_LRect, top, 4);
NEVREL_CHECK_FIELD(PF_LRect, right, 8);
NEVREL_CHECK_FIELD(PF_LRect, bottom, 12);
using PF_Rect = PF_LRect;

struct PF_Point {
    A_long h, v;
};
NEVREL_CHECK_RECORD(PF_Point, 8, 4);
NEVREL_CHECK_FIELD(PF_Point, h, 0);
NEVREL_CHECK_FIELD(PF_Point, v, 4);

struct PF_RationalScale {
    A_long num;
    A_u_long den;
};
NEVREL_CHECK_RECORD(PF_RationalScale, 8, 4);
NEVREL_CHECK_FIELD(PF_RationalScale, num, 0);
NEVREL_CHECK_FIELD(PF_RationalScale, den, 4);

/// Of the host's effect interface.
struct PF_SpecVersion {
    A_short major, minor;
};
NEVREL_CHECK_RECORD(PF_SpecVersion, 4, 2);
NEVREL_CHECK_FIELD(PF_SpecVersion, major, 0);
NEVREL_CHECK_FIELD(PF_SpecVersion, minor, 2);
