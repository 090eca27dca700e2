// The control values of a frame, read from the host's parameters.
#pragma once

#include "kernel/effect_values.h"
#include "sdk/effect_api.h"

/// The values that smart pre-render reads and hands to smart render.
using PreRenderParams = EffectValues;

/// Takes the values from the parameter array that comes with a command.
void FillJobFromParams(EffectValues& values, PF_ParamDef* const params[]);

/// Checks the parameters out at the command's time, one by one, and in again. When one cannot be
/// had, the rest are not asked for and the host's code comes back.
[[nodiscard]] PF_Err CheckoutPreRenderParams(PreRenderParams& values, const PF_InData* inData);
