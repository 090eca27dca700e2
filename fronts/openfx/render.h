// A frame of a clip, smoothed.
#pragma once

#include "fronts/openfx/openfx.h"

/// Answers the render action of an instance. Throws the status of what cannot be rendered.
[[nodiscard]] ofx::Status Render(ofx::Effect effect, ofx::PropertySet inArgs,
                                 ofx::PropertySet outArgs);
