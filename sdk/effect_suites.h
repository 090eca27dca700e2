// The host's function suites, with the names and versions under which they are acquired.
#pragma once

#include "sdk/effect_params.h"

/// The way to every other suite; both functions return 0 on success.
struct SPBasicSuite {
    A_long (*AcquireSuite)(const char* name, A_long version, const void** suite);
    A_long (*ReleaseSuite)(const char* name, A_long version);
    void* unused_functions[5];
};
NEVREL_CHECK_RECORD(SPBasicSuite, 56, 8);
NEVREL_CHECK_FIELD(SPBasicSuite, AcquireSuite, 0);
NEVREL_CHECK_FIELD(SPBasicSuite, ReleaseSuite, 8);

inline constexpr char kPFHandleSuite[] = "PF Handle Suite";
inline constexpr A_long kPFHandleSuiteVersion1 =
    2;  // the record's name counts revisions, not wire versions
/// Memory of the host's; a new handle is null when there is none, a lock when the handle cannot be
/// locked.
struct PF_HandleSuite1 {
    PF_Handle (*host_new_handle)(A_HandleSize size);
    void* (*host_lock_handle)(PF_Handle handle);
    void (*host_unlock_handle)(PF_Handle handle);
    void (*host_dispose_handle)(PF_Handle handle);
    A_HandleSize (*host_get_handle_size)(PF_Handle handle);
    void* unused_function;
};
NEVREL_CHECK_RECORD(PF_HandleSuite1, 48, 8);
NEVREL_CHECK_FIELD(PF_HandleSuite1, host_new_handle, 0);
NEVREL_CHECK_FIELD(PF_HandleSuite1, host_lock_handle, 8);
NEVREL_CHECK_FIELD(PF_HandleSuite1, host_unlock_handle, 16);
NEVREL_CHECK_FIELD(PF_HandleSuite1, host_dispose_handle, 24);
NEVREL_CHECK_FIELD(PF_HandleSuite1, host_get_handle_size, 32);

inline constexpr char kPFANSISuite[] = "PF ANSI Suite";
inline constexpr A_long kPFANSISuiteVersion1 = 1;
/// The host's C library.
struct PF_ANSICallbacksSuite1 {
    void* unused_math[15];
    int (*sprintf)(char* dst, const char* format, ...);
    char* (*strcpy)(char* dst, const char* src);
    void* asin;
    void* acos;
};
NEVREL_CHECK_RECORD(PF_ANSICallbacksSuite1, 152, 8);
NEVREL_CHECK_FIELD(PF_ANSICallbacksSuite1, sprintf, 120);
NEVREL_CHECK_FIELD(PF_ANSICallbacksSuite1, strcpy, 128);
NEVREL_CHECK_FIELD(PF_ANSICallbacksSuite1, asin, 136);
NEVREL_CHECK_FIELD(PF_ANSICallbacksSuite1, acos, 144);

inline constexpr char kPFWorldSuite[] = "PF World Suite";
inline constexpr A_long kPFWorldSuiteVersion1 = 1;
/// 8-bit scratch images; those made with flags 0 come uncleared.
struct PF_WorldSuite1 {
    PF_Err (*new_world)(PF_ProgPtr effect_ref, A_long width, A_long height, A_long flags,
                        PF_EffectWorld* world);
    PF_Err (*dispose_world)(PF_ProgPtr effect_ref, PF_EffectWorld* world);
};
NEVREL_CHECK_RECORD(PF_WorldSuite1, 16, 8);
NEVREL_CHECK_FIELD(PF_WorldSuite1, new_world, 0);
NEVREL_CHECK_FIELD(PF_WorldSuite1, dispose_world, 8);

inline constexpr A_long kPFWorldSuiteVersion2 = 2;
/// Tells the depth of an image.
struct PF_WorldSuite2 {
    void* PF_NewWorld;
    void* PF_DisposeWorld;
    PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld* world, PF_PixelFormat* format);
};
NEVREL_CHECK_RECORD(PF_WorldSuite2, 24, 8);
NEVREL_CHECK_FIELD(PF_WorldSuite2, PF_NewWorld, 0);
NEVREL_CHECK_FIELD(PF_WorldSuite2, PF_DisposeWorld, 8);
NEVREL_CHECK_FIELD(PF_WorldSuite2, PF_GetPixelFormat, 16);

inline constexpr char kPFWorldTransformSuite[] = "PF World Transform Suite";
inline constexpr A_long kPFWorldTransformSuiteVersion1 = 1;
/// Copies an image; null rectangles stand for the whole.
struct PF_WorldTransformSuite1 {
    void* composite_rect;
    void* blend;
    void* convolve;
    PF_Err (*copy)(PF_ProgPtr effect_ref, PF_EffectWorld* src, PF_EffectWorld* dst,
                   PF_Rect* src_rect, PF_Rect* dst_rect);
    void* unused_functions[3];
};
NEVREL_CHECK_RECORD(PF_WorldTransformSuite1, 56, 8);
NEVREL_CHECK_FIELD(PF_WorldTransformSuite1, composite_rect, 0);
NEVREL_CHECK_FIELD(PF_WorldTransformSuite1, blend, 8);
NEVREL_CHECK_FIELD(PF_WorldTransformSuite1, convolve, 16);
NEVREL_CHECK_FIELD(PF_WorldTransformSuite1, copy, 24);

inline constexpr char kPFParamUtilsSuite[] = "PF Param Utils Suite";
inline constexpr A_long kPFParamUtilsSuiteVersion1 = 2;  // likewise
/// Changes the look of a control.
struct PF_ParamUtilsSuite1 {
    PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex index, const PF_ParamDef* def);
    void* unused_functions[9];
};
NEVREL_CHECK_RECORD(PF_ParamUtilsSuite1, 80, 8);
NEVREL_CHECK_FIELD(PF_ParamUtilsSuite1, PF_UpdateParamUI, 0);

inline constexpr char kPFAppSuite[] = "PF AE App Suite";
inline constexpr A_long kPFAppSuiteVersion4 =
    6;  // likewise; later revisions move PF_IsRenderEngine
/// Tells how After Effects runs.
struct PFAppSuite4 {
    void* unused_functions[5];
    PF_Err (*PF_IsRenderEngine)(PF_Boolean* render_engine);
    void* unused_later_functions[5];
};
NEVREL_CHECK_RECORD(PFAppSuite4, 88, 8);
NEVREL_CHECK_FIELD(PFAppSuite4, PF_IsRenderEngine, 40);
