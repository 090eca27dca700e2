// The scale on which full intensity is 1: the nearest samples to its values, and on it the colour
// of pictures that store it multiplied by alpha.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

/// The nearest of the whole numbers from 0 to `full`; 0 for what is no number.
template <typename Integer>
[[nodiscard]] Integer WholeFromUnit(double unit, int full) {
    const double inside = unit > 0 ? std::min(unit, 1.0) : 0;
    return static_cast<Integer>(std::lround(inside * full));
}

/// The nearest number of the type; finite ones stay finite.
template <typename Float>
[[nodiscard]] Float FloatFromUnit(double unit) {
    constexpr double most = std::numeric_limits<Float>::max();
    return static_cast<Float>(std::isfinite(unit) ? std::clamp(unit, -most, most) : unit);
}

/// Straight colour of what is stored multiplied by alpha. Behind an alpha of 0 it is stored as it
/// is.
[[nodiscard]] inline double Straighten(double color, double alpha) {
    return alpha == 0 ? color : color / alpha;
}

/// What is stored of straight colour whose alpha was `alphaBefore` and now is `alpha`. What stays
/// clear was not divided and is not multiplied.
[[nodiscard]] inline double Multiply(double color, double alphaBefore, double alpha) {
    return alphaBefore == 0 && alpha == 0 ? color : color * alpha;
}
