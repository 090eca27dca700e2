// The effect's controls as parameters of the host.
#pragma once

#include "fronts/openfx/openfx.h"
#include "nevrel.h"

/// Defines the parameters of an effect that is being described: those of the core, in their order.
[[nodiscard]] ofx::Status DefineControls(ofx::Effect effect);

/// The values of an instance's parameters at a time, within their ranges.
[[nodiscard]] ofx::Status ReadControls(ofx::Effect effect, double time, nevrel_settings& settings);
