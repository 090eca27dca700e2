// The records that come with every command.
#pragma once

#include "sdk/effect_callbacks.h"

struct SPBasicSuite;

/// Declared for its size only: the effect has no sound.
struct PF_SoundWorld {
    void* reserved[4];
};
NEVREL_CHECK_RECORD(PF_SoundWorld, 32, 8);

/// What every command comes with. Everything behind a pointer is the host's for the length of the
/// command.
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
NEVREL_CHECK_FIELD(PF_InData, inter, 0);
NEVREL_CHECK_FIELD(PF_InData, utils, 176);
NEVREL_CHECK_FIELD(PF_InData, effect_ref, 184);
NEVREL_CHECK_FIELD(PF_InData, quality, 192);
NEVREL_CHECK_FIELD(PF_InData, version, 196);
NEVREL_CHECK_FIELD(PF_InData, serial_num, 200);
NEVREL_CHECK_FIELD(PF_InData, appl_id, 204);
NEVREL_CHECK_FIELD(PF_InData, num_params, 208);
NEVREL_CHECK_FIELD(PF_InData, reserved, 212);
NEVREL_CHECK_FIELD(PF_InData, what_cpu, 216);
NEVREL_CHECK_FIELD(PF_InData, what_fpu, 220);
NEVREL_CHECK_FIELD(PF_InData, current_time, 224);
NEVREL_CHECK_FIELD(PF_InData, time_step, 228);
NEVREL_CHECK_FIELD(PF_InData, total_time, 232);
NEVREL_CHECK_FIELD(PF_InData, local_time_step, 236);
NEVREL_CHECK_FIELD(PF_InData, time_scale, 240);
NEVREL_CHECK_FIELD(PF_InData, field, 244);
NEVREL_CHECK_FIELD(PF_InData, shutter_angle, 248);
NEVREL_CHECK_FIELD(PF_InData, width, 252);
NEVREL_CHECK_FIELD(PF_InData, height, 256);
NEVREL_CHECK_FIELD(PF_InData, extent_hint, 260);
NEVREL_CHECK_FIELD(PF_InData, output_origin_x, 276);
NEVREL_CHECK_FIELD(PF_InData, output_origin_y, 280);
NEVREL_CHECK_FIELD(PF_InData, downsample_x, 284);
NEVREL_CHECK_FIELD(PF_InData, downsample_y, 292);
NEVREL_CHECK_FIELD(PF_InData, pixel_aspect_ratio, 300);
NEVREL_CHECK_FIELD(PF_InData, in_flags, 308);
NEVREL_CHECK_FIELD(PF_InData, global_data, 312);
NEVREL_CHECK_FIELD(PF_InData, sequence_data, 320);
NEVREL_CHECK_FIELD(PF_InData, frame_data, 328);
NEVREL_CHECK_FIELD(PF_InData, start_sampL, 336);
NEVREL_CHECK_FIELD(PF_InData, dur_sampL, 340);
NEVREL_CHECK_FIELD(PF_InData, total_sampL, 344);
NEVREL_CHECK_FIELD(PF_InData, src_snd, 352);
NEVREL_CHECK_FIELD(PF_InData, pica_basicP, 384);
NEVREL_CHECK_FIELD(PF_InData, pre_effect_source_origin_x, 392);
NEVREL_CHECK_FIELD(PF_InData, pre_effect_source_origin_y, 396);
NEVREL_CHECK_FIELD(PF_InData, shutter_phase, 400);

/// What a command gives back.
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
NEVREL_CHECK_FIELD(PF_OutData, flat_sdata_size, 64);
NEVREL_CHECK_FIELD(PF_OutData, frame_data, 72);
NEVREL_CHECK_FIELD(PF_OutData, width, 80);
NEVREL_CHECK_FIELD(PF_OutData, height, 84);
NEVREL_CHECK_FIELD(PF_OutData, origin, 88);
NEVREL_CHECK_FIELD(PF_OutData, out_flags, 96);
NEVREL_CHECK_FIELD(PF_OutData, return_msg, 100);
NEVREL_CHECK_FIELD(PF_OutData, start_sampL, 356);
NEVREL_CHECK_FIELD(PF_OutData, dur_sampL, 360);
NEVREL_CHECK_FIELD(PF_OutData, dest_snd, 368);
NEVREL_CHECK_FIELD(PF_OutData, out_flags2, 400);
