// The stages that have a faster form in vector instructions, and the choice of the instruction set.
#pragma once

#include <cstdint>

#include "kernel/edge_flags.h"
#include "sdk/effect_api.h"

/// Forms for one instruction set. They give the same bytes as the plain forms.
struct VectorForms {
    /// Scans the cells (0, y) to (width - 2, y) of a row and the one below it, width >= smallestScan, and
    /// writes their flags. The threshold is in the depth's own range and not negative. May also clear up to
    /// 31 bytes behind them.
    void (*scanRow8)(const PF_Pixel* row, const PF_Pixel* below, int width, std::int32_t threshold,
                     std::uint8_t* flags);
    void (*scanRow16)(const PF_Pixel16* row, const PF_Pixel16* below, int width, std::int32_t threshold,
                      std::uint8_t* flags);
    void (*scanRowFloat)(const PF_PixelFloat* row, const PF_PixelFloat* below, int width, float threshold,
                         std::uint8_t* flags);

    /// Splits 64 bytes of the edge map into bit planes.
    WindowFlags::Row (*splitFlags)(const std::uint8_t* flags);

    static constexpr int smallestScan = 33;
};

extern const VectorForms sse2Forms;
extern const VectorForms avx2Forms;

/// Instruction sets in ascending order; `plain` uses no vector forms and is the definition of the results.
enum class InstructionSet { plain, sse2, avx2 };

/// The widest set that this processor has.
[[nodiscard]] InstructionSet BestInstructionSet() noexcept;

/// The forms for a set; null for plain.
[[nodiscard]] const VectorForms* FormsFor(InstructionSet set) noexcept;
