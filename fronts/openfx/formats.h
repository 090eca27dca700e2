// The formats that images of clips have.
#pragma once

#include <cstddef>
#include <span>

#include "nevrel.h"

/// The channels of a pixel.
struct Components {
    const char* name;  ///< the interface's
    nevrel_order order;
    int channels;
};

/// The samples of a channel, and the ways between a row of RGBA pixels whose colour is multiplied
/// by alpha and one of straight pixels for the core.
struct Depth {
    const char* name;  ///< the interface's
    nevrel_sample sample;
    int bytes;

    nevrel_sample straightSample;  ///< of straight pixels, whose order is NEVREL_ARGB
    int straightPixelBytes;
    void (*divide)(const std::byte* row, std::byte* straight, int width);

    /// Writes to `output` what became of the row `input` when its pixels changed from `before` to
    /// `after`; what did not change is taken from `input`. The two may be the same.
    void (*multiply)(const std::byte* input, const std::byte* before, const std::byte* after,
                     std::byte* output, int width);
};

extern const std::span<const Components> componentKinds;
extern const std::span<const Depth> depths;
