// What the two smart-render commands agree on.
#pragma once

#include "sdk/effect_types.h"

/// The id under which the input layer is checked out.
inline constexpr A_long inputCheckoutId = 0;
