// Integer arithmetic that is defined for every input.
#pragma once

#include <cstdint>
#include <limits>

/// The integer part of v; the nearest end of the range where it does not fit, 0 for a NaN.
[[nodiscard]] inline std::int32_t TruncateToInt(float v) noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    if (v >= 2147483648.0F) return Limits::max();
    if (v < -2147483648.0F) return Limits::min();
    return v == v ? static_cast<std::int32_t>(v) : 0;
}

/// The value itself, or the nearest end of the 32-bit range.
[[nodiscard]] inline std::int32_t SaturateToInt(std::int64_t v) noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    if (v > Limits::max()) return Limits::max();
    return v < Limits::min() ? Limits::min() : static_cast<std::int32_t>(v);
}
