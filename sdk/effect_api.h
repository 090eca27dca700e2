// The host's published 64-bit effect interface, as far as the effect uses it. Members that it never
// touches are declared as reserved pointers or bytes of the right size.
#pragma once

#include "sdk/effect_callbacks.h"     // IWYU pragma: export
#include "sdk/effect_commands.h"      // IWYU pragma: export
#include "sdk/effect_data.h"          // IWYU pragma: export
#include "sdk/effect_params.h"        // IWYU pragma: export
#include "sdk/effect_smart_render.h"  // IWYU pragma: export
#include "sdk/effect_suites.h"        // IWYU pragma: export
#include "sdk/effect_types.h"         // IWYU pragma: export
#include "sdk/effect_world.h"         // IWYU pragma: export
