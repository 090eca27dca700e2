// Conversions between the samples of files and the channels of the effect's pixels.
#pragma once

#include <OpenImageIO/half.h>
#include <OpenImageIO/typedesc.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "sdk/effect_api.h"

namespace nevrel {

/// A channel of a 16-bit effect pixel, whose full intensity is 32768; told apart from a 16-bit file
/// sample.
struct Channel16 {
    A_u_short value;
};

/// Full intensity of each kind of sample.
template <typename T>
inline constexpr double full = 1.0;
template <>
inline constexpr double full<std::uint8_t> = 255.0;
template <>
inline constexpr double full<std::uint16_t> = 65535.0;
template <>
inline constexpr double full<Channel16> = 32768.0;

/// The sample on the scale where full intensity is 1.
template <typename T>
[[nodiscard]] double ToUnit(T sample) {
    if constexpr (std::is_same_v<T, Channel16>) {
        return sample.value / full<T>;
    } else {
        return static_cast<double>(sample) / full<T>;
    }
}

/// The nearest sample; integer kinds clamp to their range and take NaN as 0, float kinds keep
/// finite values finite.
template <typename T>
[[nodiscard]] T FromUnit(double unit) {
    if constexpr (std::is_same_v<T, Channel16>) {
        return {static_cast<A_u_short>(
            std::lround(std::isnan(unit) ? 0 : std::clamp(unit, 0.0, 1.0) * full<T>))};
    } else if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(
            std::lround(std::isnan(unit) ? 0 : std::clamp(unit, 0.0, 1.0) * full<T>));
    } else {
        using Single =
            std::conditional_t<std::is_same_v<T, half>, float, T>;  // half has no way from double
        const auto largest = static_cast<double>(std::numeric_limits<T>::max());
        return static_cast<T>(
            static_cast<Single>(std::isfinite(unit) ? std::clamp(unit, -largest, largest) : unit));
    }
}

/// The sample as another kind: FromUnit of ToUnit, in fewer steps where there are such.
template <typename To, typename From>
[[nodiscard]] To Convert(From sample) {
    constexpr bool isWider = std::is_same_v<From, half> && std::is_same_v<To, float>;
    if constexpr (std::is_same_v<To, From> || isWider) {
        return sample;
    } else if constexpr (std::is_same_v<From, std::uint16_t> && std::is_same_v<To, Channel16>) {
        return {
            static_cast<A_u_short>((sample + 1) / 2)};  // the nearest, as no two are equally near
    } else {
        return FromUnit<To>(ToUnit(sample));
    }
}

/// Calls `action` with a value of the type of a file's samples. False for types that no picture is
/// smoothed in.
template <typename Action>
bool WithSampleType(const OIIO::TypeDesc& type, Action&& action) {
    switch (type.basetype) {
        case OIIO::TypeDesc::UINT8:
            action(std::uint8_t{});
            return true;
        case OIIO::TypeDesc::UINT16:
            action(std::uint16_t{});
            return true;
        case OIIO::TypeDesc::HALF:
            action(half{});
            return true;
        case OIIO::TypeDesc::FLOAT:
            action(float{});
            return true;
        case OIIO::TypeDesc::DOUBLE:
            action(double{});
            return true;
        default:
            return false;
    }
}

}  // namespace nevrel
