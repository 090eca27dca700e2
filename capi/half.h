// Between half precision and single precision, in integer steps that compilers turn into vector
// instructions and that no denormal mode of the processor changes.
#pragma once

#include <bit>
#include <cstdint>

/// The same value; a NaN becomes a quiet one.
[[nodiscard]] inline float FloatOfHalf(std::uint16_t sample) noexcept {
    constexpr std::uint32_t rebias = 112U << 23;
    const std::uint32_t sign = (sample & 0x8000U) << 16;
    const std::uint32_t rest = sample & 0x7fffU;
    const std::uint32_t quiet = rest > 0x7c00U ? 0x00400000U : 0;
    const std::uint32_t special = rest >= 0x7c00U ? rebias | quiet : 0;
    const std::uint32_t normal = ((rest << 13) + rebias + (special & rebias)) | quiet;
    const auto denormal = std::bit_cast<std::uint32_t>(
        static_cast<float>(static_cast<std::int32_t>(rest & 0x3ffU)) * 0x1p-24F);
    return std::bit_cast<float>(sign | (rest < 0x400U ? denormal : normal));
}

/// The nearest value, of two the even one; finite values stay finite.
[[nodiscard]] inline std::uint16_t HalfOfFloat(float value) noexcept {
    constexpr std::uint32_t infinity = 0x7f800000U;
    constexpr std::uint32_t largest = 0x477fe000U;   // 65504
    constexpr std::uint32_t smallest = 0x38800000U;  // that is not denormal
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t sign = bits >> 16 & 0x8000U;
    const std::uint32_t rest = bits & 0x7fffffffU;
    const std::uint32_t near = rest > largest ? largest : rest;
    const std::uint32_t normal = (near - (112U << 23) + 0xfffU + (near >> 13 & 1)) >> 13;
    // The last bit of 0.5 + x is worth as much as that of a denormal half.
    const std::uint32_t denormal = std::bit_cast<std::uint32_t>(std::bit_cast<float>(near) + 0.5F) -
                                   std::bit_cast<std::uint32_t>(0.5F);
    const std::uint32_t nan = rest > infinity ? 0x200U | (rest >> 13 & 0x3ffU) : 0;
    const std::uint32_t finite = near < smallest ? denormal : normal;
    return static_cast<std::uint16_t>(sign | (rest >= infinity ? 0x7c00U | nan : finite));
}
