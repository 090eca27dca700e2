// The host's basic types, codes, pixels and images.
//
// Names and layouts are those of the host's published 64-bit effect interface. The records use natural
// alignment, which is the same on 64-bit Windows and 64-bit Linux, so one declaration serves both.
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

/// A four-character code with its first character in the most significant byte, as the host's application ids.
constexpr A_long PF_ApplicationCode(const char (&text)[5]) {
    A_u_long code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<A_u_char>(text[i]);
    return static_cast<A_long>(code);
}

/// A four-character code with its first character in the lowest byte, as the host's pixel formats.
constexpr PF_PixelFormat PF_PixelFormatCode(const char (&text)[5]) {
    PF_PixelFormat code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<A_u_char>(text[i]);
    return code;
}

inline constexpr A_long PF_AppID_AfterEffects = PF_ApplicationCode("FXTC");
inline constexpr A_long PF_AppID_Premiere = PF_ApplicationCode("PrMr");

inline constexpr PF_PixelFormat PF_PixelFormat_ARGB32 = PF_PixelFormatCode("argb");
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB64 = PF_PixelFormatCode("ae16");
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB128 = PF_PixelFormatCode("ae32");
inline constexpr PF_PixelFormat PF_PixelFormat_INVALID = PF_PixelFormatCode("badf");

inline constexpr PF_Err PF_Err_NONE = 0;
inline constexpr PF_Err PF_Err_OUT_OF_MEMORY = 4;
inline constexpr PF_Err PF_Err_INTERNAL_STRUCT_DAMAGED = 512;
inline constexpr PF_Err PF_Err_UNRECOGNIZED_PARAM_TYPE = 514;
inline constexpr PF_Err PF_Err_BAD_CALLBACK_PARAM = 516;

struct PF_LRect {
    A_long left, top, right, bottom;
};
NEVREL_CHECK_RECORD(PF_LRect, 16, 4);
using PF_Rect = PF_LRect;
using PF_UnionableRect = PF_LRect;

struct PF_Point {
    A_long h, v;
};
NEVREL_CHECK_RECORD(PF_Point, 8, 4);

struct PF_RationalScale {
    A_long num;
    A_u_long den;
};
NEVREL_CHECK_RECORD(PF_RationalScale, 8, 4);

struct PF_SpecVersion {
    A_short major, minor;
};
NEVREL_CHECK_RECORD(PF_SpecVersion, 4, 2);

/// 8-bit pixel, channels 0..255, straight colour.
struct PF_Pixel {
    A_u_char alpha, red, green, blue;
};
NEVREL_CHECK_RECORD(PF_Pixel, 4, 1);
NEVREL_CHECK_FIELD(PF_Pixel, alpha, 0);
NEVREL_CHECK_FIELD(PF_Pixel, blue, 3);

/// 16-bit pixel, channels 0..32768, straight colour.
struct PF_Pixel16 {
    A_u_short alpha, red, green, blue;
};
NEVREL_CHECK_RECORD(PF_Pixel16, 8, 2);
NEVREL_CHECK_FIELD(PF_Pixel16, alpha, 0);
NEVREL_CHECK_FIELD(PF_Pixel16, blue, 6);

/// Float pixel, 1.0 is full intensity, straight colour, nothing clamped.
struct PF_PixelFloat {
    float alpha, red, green, blue;
};
NEVREL_CHECK_RECORD(PF_PixelFloat, 16, 4);
NEVREL_CHECK_FIELD(PF_PixelFloat, alpha, 0);
NEVREL_CHECK_FIELD(PF_PixelFloat, blue, 12);

/// An image: `height` rows of `width` pixels, `rowbytes` apart, the top row at `data`.
struct PF_EffectWorld {
    void* reserved0;
    void* reserved1;
    A_long world_flags;
    void* data;
    A_long rowbytes;
    A_long width;
    A_long height;
    PF_LRect extent_hint;
    void* platform_ref;
    A_long reserved_long1;
    void* reserved_long4;
    PF_RationalScale pix_aspect_ratio;
    void* reserved_long2;
    A_long origin_x;
    A_long origin_y;
    A_long reserved_long3;
    A_long dephault;
};
NEVREL_CHECK_RECORD(PF_EffectWorld, 120, 8);
NEVREL_CHECK_FIELD(PF_EffectWorld, world_flags, 16);
NEVREL_CHECK_FIELD(PF_EffectWorld, data, 24);
NEVREL_CHECK_FIELD(PF_EffectWorld, rowbytes, 32);
NEVREL_CHECK_FIELD(PF_EffectWorld, width, 36);
NEVREL_CHECK_FIELD(PF_EffectWorld, height, 40);
NEVREL_CHECK_FIELD(PF_EffectWorld, extent_hint, 44);
NEVREL_CHECK_FIELD(PF_EffectWorld, platform_ref, 64);
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved_long4, 80);
NEVREL_CHECK_FIELD(PF_EffectWorld, pix_aspect_ratio, 88);
NEVREL_CHECK_FIELD(PF_EffectWorld, origin_x, 104);
NEVREL_CHECK_FIELD(PF_EffectWorld, origin_y, 108);
NEVREL_CHECK_FIELD(PF_EffectWorld, dephault, 116);
using PF_LayerDef = PF_EffectWorld;
