// std::bit_cast, which the compiler knows and its library does not yet have.
#pragma once

#include <bit>

#ifndef __cpp_lib_bit_cast
namespace std {  // NOLINT(cert-dcl58-cpp)
template <typename To, typename From>
[[nodiscard]] constexpr To bit_cast(const From& from) noexcept {
    return __builtin_bit_cast(To, from);
}
}  // namespace std
#endif
