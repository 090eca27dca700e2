// The declaration of the effect's controls.
#pragma once

#include "sdk/effect_api.h"

/// Adds the controls to the host, with or without the colour-key group as the user chose, and
/// writes their number (the input layer included) to `outData`. Returns PF_Err_NONE, or throws the
/// host's code when it refuses a control and PF_Err_BAD_CALLBACK_PARAM when it lacks a suite.
[[nodiscard]] PF_Err ParamsSetup(const PF_InData* inData, PF_OutData* outData);
