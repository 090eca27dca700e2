// The values of a control in the settings of the C interface, for the fronts that enumerate them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "nevrel.h"

/// The fields of `control` in `settings`: one, or red, green and blue of a colour.
inline std::int32_t* FieldsOf(const nevrel_control& control, nevrel_settings& settings) {
    return reinterpret_cast<std::int32_t*>(reinterpret_cast<std::byte*>(&settings) +
                                           control.offset);
}
