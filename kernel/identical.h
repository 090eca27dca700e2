// Comparison of pixels as they lie in memory.
#pragma once

#include <cstring>

/// Whether all bytes of two pixels are equal. Of float pixels a NaN thus equals itself, and -0.0 is
/// not 0.0.
template <typename Pixel>
[[nodiscard]] bool Identical(const Pixel& p, const Pixel& q) noexcept {
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the bytes are what counts
    return std::memcmp(&p, &q, sizeof(Pixel)) == 0;
}
