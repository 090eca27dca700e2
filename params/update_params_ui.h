// The state of the controls.
#pragma once

#include "sdk/effect_api.h"

/// Enables the colour-key controls while the colour key is on and disables them otherwise; without
/// the group, marks the colour-key switch with a separator; disables everything in a render engine.
[[nodiscard]] PF_Err UpdateParamsUi(const PF_InData* inData, PF_OutData* outData,
                                    PF_ParamDef* const params[]);
