// The host's images and their pixels.
#pragma once

#include "sdk/effect_types.h"

inline constexpr PF_PixelFormat PF_PixelFormat_ARGB32 = PF_PixelFormatCode("argb");
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB64 = PF_PixelFormatCode("ae16");
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB128 = PF_PixelFormatCode("ae32");
inline constexpr PF_PixelFormat PF_PixelFormat_INVALID = PF_PixelFormatCode("badf");

/// 8-bit pixel, channels 0..255, straight colour.
struct PF_Pixel {
    A_u_char alpha, red, green, blue;
};
NEVREL_CHECK_RECORD(PF_Pixel, 4, 1);
NEVREL_CHECK_FIELD(PF_Pixel, alpha, 0);
NEVREL_CHECK_FIELD(PF_Pixel, red, 1);
NEVREL_CHECK_FIELD(PF_Pixel, green, 2);
NEVREL_CHECK_FIELD(PF_Pixel, blue, 3);

/// 16-bit pixel, channels 0..32768, straight colour.
struct PF_Pixel16 {
    A_u_short alpha, red, green, blue;
};
NEVREL_CHECK_RECORD(PF_Pixel16, 8, 2);
NEVREL_CHECK_FIELD(PF_Pixel16, alpha, 0);
NEVREL_CHECK_FIELD(PF_Pixel16, red, 2);
NEVREL_CHECK_FIELD(PF_Pixel16, green, 4);
NEVREL_CHECK_FIELD(PF_Pixel16, blue, 6);

/// Float pixel, 1.0 is full intensity, straight colour, nothing clamped.
struct PF_PixelFloat {
    float alpha, red, green, blue;
};
NEVREL_CHECK_RECORD(PF_PixelFloat, 16, 4);
NEVREL_CHECK_FIELD(PF_PixelFloat, alpha, 0);
NEVREL_CHECK_FIELD(PF_PixelFloat, red, 4);
NEVREL_CHECK_FIELD(PF_PixelFloat, green, 8);
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
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved0, 0);
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved1, 8);
NEVREL_CHECK_FIELD(PF_EffectWorld, world_flags, 16);
NEVREL_CHECK_FIELD(PF_EffectWorld, data, 24);
NEVREL_CHECK_FIELD(PF_EffectWorld, rowbytes, 32);
NEVREL_CHECK_FIELD(PF_EffectWorld, width, 36);
NEVREL_CHECK_FIELD(PF_EffectWorld, height, 40);
NEVREL_CHECK_FIELD(PF_EffectWorld, extent_hint, 44);
NEVREL_CHECK_FIELD(PF_EffectWorld, platform_ref, 64);
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved_long1, 72);
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved_long4, 80);
NEVREL_CHECK_FIELD(PF_EffectWorld, pix_aspect_ratio, 88);
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved_long2, 96);
NEVREL_CHECK_FIELD(PF_EffectWorld, origin_x, 104);
NEVREL_CHECK_FIELD(PF_EffectWorld, origin_y, 108);
NEVREL_CHECK_FIELD(PF_EffectWorld, reserved_long3, 112);
NEVREL_CHECK_FIELD(PF_EffectWorld, dephault, 116);
using PF_LayerDef = PF_EffectWorld;
