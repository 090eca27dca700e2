// What the smoothing pass has to do at a pixel, as far as a fixed neighbourhood in the edge map settles it.
// Only the lengths of runs, lines and staircases are left to be measured.
#pragma once

#include <array>
#include <cassert>
#include <cstdint>

#include "kernel/offset.h"

/// For one step, the pixels of up to four windows at which it applies: bit i of word w is pixel i of window
/// w.
struct StepMask {
    static constexpr int windows = 4;

    std::uint64_t word[windows];

    [[nodiscard]] bool test(int window, int bit) const {
        assert(window >= 0 && window < windows && bit >= 0 && bit < 64);
        return (word[window] >> bit & 1U) != 0;
    }
};

/// All steps. Only a run may turn out to be none when it is measured.
struct StepMasks {
    StepMask run[4];   ///< by side: a run meets the piece
    StepMask line[4];  ///< by side: a thin line ends at the piece, if there is no run
    StepMask horizontalStaircase[4];
    StepMask verticalStaircase[4];
    StepMask corner;  ///< a vertical piece without diagonals both ways
    StepMask verticalNotch[3];
    StepMask horizontalNotch[3];
    StepMask cornerNotch[2];
    StepMask tip;
    StepMask aboveTip;   ///< restores the pixel above, on the right
    StepMask besideTip;  ///< restores the pixel itself
    StepMask junction[8];

    // Whether any step of a group applies.
    StepMask anyVertical;    ///< at the vertical piece on the pixel's right
    StepMask anyHorizontal;  ///< at the horizontal piece below it
    StepMask anyHorizontalStaircase;
    StepMask anyVerticalStaircase;
    StepMask anyTip;
    StepMask anyJunction;
    StepMask any;
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
