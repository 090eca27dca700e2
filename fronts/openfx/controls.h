// The effect's controls as parameters of the host.
#pragma once

#include "fronts/openfx/openfx.h"
#include "nevrel.h"

/// Defines the parameters of an effect that is being described: those of the core, in their order.
/// Both throw the status of a host that fails.
void DefineControls(ofx::Effect effect);

/// The values of an instance's parameters at a time, within their ranges.
[[nodiscard]] nevrel_settings ReadControls(ofx::Effect effect, double time);
