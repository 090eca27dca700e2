// The declaration of the effect's controls.
#pragma once

#include "sdk/effect_api.h"

/// Adds the controls to the host, with or without the colour-key group as the user chose, and
/// writes their number (the input layer included) to `outData`. Throws the host's code when it
/// refuses a control.
[[nodiscard]] PF_Err ParamsSetup(const PF_InData* inData, PF_OutData* outData);
