// What the patterns find at the pixels of some windows: all that the smoothing pass has to do, as
// far as a fixed neighbourhood in the edge map settles it. Only the lengths of staircases and of
// most longer runs and lines are left to be measured.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

/// Some pixels of some windows: bit i of word w is pixel i of window w.
struct PixelSet {
    static constexpr int windows = 16;

    std::uint64_t word[windows];

    [[nodiscard]] bool has(int window, int bit) const {
        assert(window >= 0 && window < windows && bit >= 0 && bit < 64);
        return (word[window] >> bit & 1U) != 0;
    }
};

/// The steps at a pixel in their fixed order; later ones act on what earlier ones have left. The
/// vertical piece lies on the pixel's right, the horizontal one below it.
enum class Step : std::uint8_t {
    verticalRamps,    ///< to the left and to the right
    verticalFixes,    ///< staircase and notch
    horizontalRamps,  ///< up and down
    horizontalFixes,  ///< staircase and notches
    finish,           ///< tip and junctions
};
inline constexpr int stepCount = 5;

/// The ramp that a side of a piece gets. A run is lone when there is none from its far end, and the
/// same when it is seen from there too.
enum class RampKind : std::uint8_t {
    none,
    corner,  ///< the light blend across a vertical piece
    lone1,   ///< of one pixel
    lone2,
    lone3,
    same1,
    same2,
    measured,  ///< another run, or a thin line
};
inline constexpr int rampKindBits = 3;

/// The pixels at which each step and each of its forms applies.
struct Findings {
    PixelSet step[stepCount];
    PixelSet any;          ///< of the steps
    PixelSet besidesTips;  ///< any but the average of a tip

    PixelSet rampKind[4][rampKindBits];  ///< by side; the bits of a RampKind, the lowest first
    PixelSet run[4];                     ///< by side: the ramp is a run's
    PixelSet horizontalStaircase[4];
    PixelSet verticalStaircase[4];
    PixelSet verticalNotch[3];
    PixelSet horizontalNotch[3];
    PixelSet cornerNotch[2];
    PixelSet tip;
    PixelSet tipRestore[4];
    PixelSet junction[8];
};

/// The findings at one pixel.
struct FindingsAt {
    const Findings& findings;
    int window;
    int bit;

    [[nodiscard]] bool isIn(const PixelSet& set) const { return set.has(window, bit); }
    /// A number from the sets of its bits, the lowest first.
    template <std::size_t count>
    [[nodiscard]] unsigned numberIn(const PixelSet (&bits)[count]) const {
        unsigned number = 0;
        for (std::size_t i = 0; i < count; ++i) number |= unsigned{isIn(bits[i])} << i;
        return number;
    }
};
