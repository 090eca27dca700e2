// The caller's settings, checked against the controls.
#pragma once

#include "kernel/effect_values.h"
#include "nevrel.h"

/// Reads the settings, or the defaults when they are null. NEVREL_BAD_ARGUMENT for a struct of no
/// known size, NEVREL_BAD_SETTING for a control outside its range; `values` is then unchanged.
[[nodiscard]] nevrel_status ReadSettings(const nevrel_settings* settings,
                                         EffectValues& values) noexcept;
