// How the host runs.
#pragma once

#include "sdk/effect_api.h"

/// Whether After Effects runs as a render engine without a user interface; false under every other
/// host. Throws PF_Err_BAD_CALLBACK_PARAM when After Effects lacks the suite that tells.
[[nodiscard]] bool IsRenderEngine(const PF_InData* inData);
