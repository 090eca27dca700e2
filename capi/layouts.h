// How pixels lie in an image of the caller, and the ways to the core's pixels and back.
#pragma once

#include <cstddef>

#include "kernel/kernels.h"
#include "nevrel.h"

/// One order of channels with one type of samples.
struct Layout {
    PixelDepth depth;  ///< at which it is smoothed
    int sampleBytes;
    int pixelBytes;
    int corePixelBytes;  ///< of a pixel of that depth
    bool hasAlpha;
    bool isCores;           ///< the pixels are the core's as they stand
    bool hasCoresChannels;  ///< they are so up to the order of their channels

    /// Converts a row of the caller's into one of the core's.
    void (*load)(const std::byte* row, std::byte* coreRow, int width);

    /// Converts back what was made of the row `input`: from `before` in the core's pixels it has
    /// become `after`. What is the same in both is taken from `input`. Where hasCoresChannels,
    /// `after` may lie where `output` does, and the other two are not read; elsewhere only `input`
    /// may lie there.
    void (*store)(const std::byte* input, const std::byte* before, const std::byte* after,
                  std::byte* output, int width);
};

/// Null when one of the two is unknown.
[[nodiscard]] const Layout* FindLayout(nevrel_order order, nevrel_sample sample) noexcept;
