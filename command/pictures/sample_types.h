// Conversions between the samples of files and the channels of the effect's pixels.
#pragma once

#include <Imath/half.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "capi/samples.h"
#include "capi/unit_scale.h"
#include "sdk/effect_api.h"

namespace nevrel {

/// What the samples of a file's channel are.
enum class SampleType {
    UInt8,
    Int8,
    UInt16,
    Int16,
    UInt32,
    Int32,
    UInt64,
    Int64,
    Half,
    Float,
    Double
};

[[nodiscard]] constexpr std::size_t SampleBytes(SampleType type) {
    constexpr std::array<std::size_t, 11> bytes{1, 1, 2, 2, 4, 4, 8, 8, 2, 4, 8};
    return bytes[static_cast<std::size_t>(type)];
}

[[nodiscard]] constexpr const char* SampleName(SampleType type) {
    constexpr std::array names{"uint8",  "int8",  "uint16", "int16", "uint",  "int",
                               "uint64", "int64", "half",   "float", "double"};
    return names[static_cast<std::size_t>(type)];
}

[[nodiscard]] constexpr bool IsFloat(SampleType type) { return type >= SampleType::Half; }

/// A channel of a 16-bit effect pixel, whose full intensity is 32768; told apart from a 16-bit file
/// sample.
struct Channel16 {
    A_u_short value;
};

/// Full intensity of each kind of sample.
template <typename T>
inline constexpr int full = 1;
template <>
inline constexpr int full<std::uint8_t> = 255;
template <>
inline constexpr int full<std::uint16_t> = 65535;
template <>
inline constexpr int full<Channel16> = 32768;

/// The sample on the scale where full intensity is 1.
template <typename T>
[[nodiscard]] double ToUnit(T sample) {
    if constexpr (std::is_same_v<T, Channel16>) {
        return static_cast<double>(sample.value) / full<T>;
    } else {
        return static_cast<double>(sample) / full<T>;
    }
}

/// The nearest sample; integer kinds clamp to their range and take NaN as 0, float kinds keep
/// finite values finite.
template <typename T>
[[nodiscard]] T FromUnit(double unit) {
    if constexpr (std::is_same_v<T, Channel16>) {
        return {Samples32768::fromUnit(unit)};
    } else if constexpr (std::is_integral_v<T>) {
        return WholeFromUnit<T>(unit, full<T>);
    } else if constexpr (std::is_same_v<T, half>) {
        half sample;
        sample.setBits(SamplesHalf::fromUnit(unit));
        return sample;
    } else {
        return FloatFromUnit<T>(unit);
    }
}

/// The sample as another kind: FromUnit of ToUnit, in fewer steps where there are such.
template <typename To, typename From>
[[nodiscard]] To Convert(From sample) {
    constexpr bool isWider = std::is_same_v<From, half> && std::is_same_v<To, float>;
    if constexpr (std::is_same_v<To, From> || isWider) {
        return sample;
    } else if constexpr (std::is_same_v<From, std::uint16_t> && std::is_same_v<To, Channel16>) {
        return {Samples65535::toChannel(sample)};
    } else if constexpr (std::is_same_v<From, Channel16> && std::is_same_v<To, std::uint16_t>) {
        return Samples65535::toSample(sample.value);
    } else {
        return FromUnit<To>(ToUnit(sample));
    }
}

/// Calls `action` with a value of the type of a file's samples. False for types that no picture is
/// smoothed in.
template <typename Action>
bool WithSampleType(SampleType type, Action&& action) {
    switch (type) {
        case SampleType::UInt8:
            action(std::uint8_t{});
            return true;
        case SampleType::UInt16:
            action(std::uint16_t{});
            return true;
        case SampleType::Half:
            action(half{});
            return true;
        case SampleType::Float:
            action(float{});
            return true;
        case SampleType::Double:
            action(double{});
            return true;
        default:
            return false;
    }
}

}  // namespace nevrel
