// What the effect tells about itself. Each command returns PF_Err_NONE, or throws
// PF_Err_BAD_CALLBACK_PARAM when the host lacks a suite that it needs.
#pragma once

#include "sdk/effect_api.h"

/// Writes the version word and the capability flags into `outData`.
[[nodiscard]] PF_Err GlobalSetup(const PF_InData* inData, PF_OutData* outData);

/// Writes name, version and copyright into the message field of `outData`; with Shift held down
/// also the build.
[[nodiscard]] PF_Err About(const PF_InData* inData, PF_OutData* outData);
