// Before and after, side by side.
#pragma once

#include "command/views/canvas.h"

namespace nevrel {

/// How much larger the spot is drawn.
inline constexpr int spotScale = 8;

/// The pixels around (x, y) that are drawn enlarged.
[[nodiscard]] Area SpotAround(int x, int y, const Canvas& picture);

/// The spot where `before` and `after`, of one size, differ most; the middle where they do not.
[[nodiscard]] Area BusiestSpot(const Canvas& before, const Canvas& after);

/// The two side by side with the spot outlined, and below them the spot of each.
[[nodiscard]] Canvas DrawComparison(const Canvas& before, const Canvas& after, const Area& spot);

}  // namespace nevrel
