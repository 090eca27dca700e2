// The state of the controls.
#pragma once

#include "sdk/effect_api.h"

/// Enables the colour-key controls while the colour key is on and disables them otherwise; without
/// the group, marks the colour-key switch with a separator; disables everything in a render engine.
/// Returns PF_Err_NONE, or throws PF_Err_BAD_CALLBACK_PARAM when the host lacks a suite.
[[nodiscard]] PF_Err UpdateParamsUi(const PF_InData* inData, PF_OutData* outData,
                                    PF_ParamDef* const params[]);
