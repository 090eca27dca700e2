// The stages that have a faster form in vector instructions, and the choice of the instruction set.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "kernel/key_color.h"
#include "kernel/step_masks.h"
#include "sdk/effect_api.h"

/// The memory of an edge map.
struct MapBytes {
    const std::uint8_t* flags;  ///< of row 0, column -StepWindows::margin
    std::ptrdiff_t stride;      ///< bytes from row to row
    const std::uint8_t* end;    ///< behind the last byte of the map
    int width;
    int height;
};

/// Stretches of rows and the steps at their pixels. Window w stands for the pixels of row y[w] from
/// column x[w] on, in bits margin to margin + pixels - 1 of the masks' words; the other bits are
/// there for the patterns to look at.
struct StepWindows {
    static constexpr int columns = 64;
    static constexpr int margin = 4;  // the map's left margin
    static constexpr int pixels = 56;

    int count;
    int x[StepMask::windows];
    int y[StepMask::windows];
    StepMasks steps;

    /// The column that a bit of a window stands for.
    [[nodiscard]] int column(int window, int bit) const { return x[window] - margin + bit; }
};

/// Forms for one instruction set. They give the same bytes as the plain forms.
struct VectorForms {
    /// Scans the cells (0, y) to (width - 2, y) of a row and the one below it, width >=
    /// smallestScan, and writes their flags. The threshold is in the depth's own range and not
    /// negative. May also clear up to 31 bytes behind them.
    void (*scanRow8)(const PF_Pixel* row, const PF_Pixel* below, int width, std::int32_t threshold,
                     std::uint8_t* flags);
    void (*scanRow16)(const PF_Pixel16* row, const PF_Pixel16* below, int width,
                      std::int32_t threshold, std::uint8_t* flags);
    void (*scanRowFloat)(const PF_PixelFloat* row, const PF_PixelFloat* below, int width,
                         float threshold, std::uint8_t* flags);

    /// Copies pixels, with alpha made 0 of those that match the key colour, or of those that do
    /// not. May leave out the last few; returns how many pixels it has copied.
    int (*markPixels8)(const PF_Pixel* from, PF_Pixel* to, int count, const IntegerKey& key,
                       bool matching);
    int (*markPixels16)(const PF_Pixel16* from, PF_Pixel16* to, int count, const IntegerKey& key,
                        bool matching);
    int (*markPixelsFloat)(const PF_PixelFloat* from, PF_PixelFloat* to, int count,
                           const FloatKey& key, bool matching);

    /// Finds the next windows with straight edges, row by row from (x, y) on, and their steps.
    /// Moves (x, y) on behind them; y is the map's height when it is done. Asks for a width of at
    /// least StepWindows::pixels.
    void (*findSteps)(const MapBytes& map, int& x, int& y, StepWindows& windows);

    static constexpr int smallestScan = 33;
};

extern const VectorForms sse2Forms;
extern const VectorForms avx2Forms;
extern const VectorForms avx512Forms;

/// Instruction sets in ascending order; `plain` uses no vector forms and is the definition of the
/// results.
enum class InstructionSet { plain, sse2, avx2, avx512 };
inline constexpr std::array allInstructionSets{InstructionSet::plain, InstructionSet::sse2,
                                               InstructionSet::avx2, InstructionSet::avx512};

/// The widest set that this processor has.
[[nodiscard]] InstructionSet BestInstructionSet() noexcept;

/// The forms for a set; null for plain.
[[nodiscard]] const VectorForms* FormsFor(InstructionSet set) noexcept;
