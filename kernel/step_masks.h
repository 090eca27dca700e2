// What the smoothing pass has to do at a pixel, as far as a fixed neighbourhood in the edge map
// settles it. Only the lengths of staircases and of most longer runs and lines are left to be
// measured.
#pragma once

#include <array>
#include <cassert>
#include <cstdint>

#include "kernel/offset.h"

/// The pixels of some windows at which something applies: bit i of word w is pixel i of window w.
struct StepMask {
    static constexpr int windows = 16;

    std::uint64_t word[windows];

    [[nodiscard]] bool test(int window, int bit) const {
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

/// The ramp that a side of a piece gets, as the three bits of StepMasks::rampKind. A run is lone
/// when there is none from its far end, and the same when it is seen from there too.
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

/// Where the steps apply, and which form they take.
struct StepMasks {
    StepMask step[stepCount];
    StepMask any;

    StepMask rampKind[4][3];  ///< by side, from the lowest bit on
    StepMask run[4];          ///< by side: the ramp is a run's
    StepMask horizontalStaircase[4];
    StepMask verticalStaircase[4];
    StepMask verticalNotch[3];
    StepMask horizontalNotch[3];
    StepMask cornerNotch[2];
    StepMask tip;
    StepMask aboveTip;   ///< restores the pixel above, on the right
    StepMask besideTip;  ///< restores the pixel itself
    StepMask junction[8];
};

/// The pixel that each notch pattern restores.
inline constexpr std::array<Offset, 3> verticalNotchPixel{{{-1, 0}, {1, -1}, {-1, -1}}};
inline constexpr std::array<Offset, 3> horizontalNotchPixel{{{0, 0}, {-1, -1}, {0, -1}}};
inline constexpr std::array<Offset, 2> cornerNotchPixel{{{1, -1}, {0, -1}}};

/// From which pixel into which each junction blends.
struct Junction {
    Offset from;
    Offset into;
};
inline constexpr std::array<Junction, 8> junctions{{
    {{0, 0}, {0, -1}},
    {{1, 0}, {1, -1}},
    {{0, 0}, {0, 1}},
    {{1, 0}, {1, 1}},
    {{0, 0}, {-1, 0}},
    {{0, 1}, {-1, 1}},
    {{0, 0}, {1, 0}},
    {{0, 1}, {1, 1}},
}};
