// A key colour and its tolerance in a depth's own range.
#pragma once

#include <cstdint>

/// Of the 8-bit and 16-bit kernels.
struct IntegerKey {
    std::int32_t red;
    std::int32_t green;
    std::int32_t blue;
    std::int32_t tolerance;
};

/// Of the float kernels.
struct FloatKey {
    float red;
    float green;
    float blue;
    float tolerance;
};
