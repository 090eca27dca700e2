// A key colour and its tolerance in a depth's own range.
#pragma once

#include <cstdint>

template <typename Channel>
struct KeyColor {
    Channel red;
    Channel green;
    Channel blue;
    Channel tolerance;
};

using IntegerKey = KeyColor<std::int32_t>;  ///< of the 8-bit and 16-bit kernels
using FloatKey = KeyColor<float>;
