// The nine control values of one instance of the effect.
#pragma once

#include <cstdint>

/// The values in the order in which they are passed on and stored everywhere. Ranges are those of
/// the controls; a stored default may hold any integer.
struct EffectValues {
    std::int32_t colorThreshold;  ///< 1..255; two neighbours form an edge when their colour
                                  ///< difference exceeds it
    std::int32_t softness;  ///< 0..100, length of the blend ramps in percent; 0 turns smoothing off
    std::int32_t bias;      ///< 0..100, shape of the blend ramps
    std::int32_t colorKeyEnable;  ///< non-zero: pixels of the key colour become transparent
    std::int32_t keyRed;          ///< key colour, 0..255; the low byte counts
    std::int32_t keyGreen;
    std::int32_t keyBlue;
    std::int32_t
        keyThreshold;  ///< 0..255, largest colour distance that still counts as the key colour
    std::int32_t keyInvert;  ///< non-zero: the pixels that do not match become transparent instead

    friend bool operator==(const EffectValues&, const EffectValues&) = default;
};

/// The part of a key colour component that counts.
[[nodiscard]] constexpr std::uint8_t LowByte(std::int32_t component) {
    return static_cast<std::uint8_t>(component);
}

static_assert(sizeof(EffectValues) == 36,
              "nine 32-bit integers, as handed from pre-render to render");
