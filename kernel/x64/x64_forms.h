// The forms for x64 processors, one record an instruction set, and which of them this one has.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kernel/forms.h"

extern const Forms sse2Forms;
extern const Forms avx2Forms;
extern const Forms avx512Forms;

/// How many of the three this processor can run: it never has a wider set without the narrower
/// ones.
[[nodiscard]] std::size_t UsableX64Sets() noexcept;

/// The blend across a piece; SSE2 has what integer pixels need, so every set has these. They can
/// where all alphas are the sources', 16-bit target channels are at most 32768, so that a weight of
/// 0 changes nothing, and weights lie from 0 to 65535.
[[nodiscard]] bool BlendAcross8(std::byte* at, std::ptrdiff_t step, const Pixel8& back,
                                const Pixel8& on, const std::int32_t* backWeights,
                                const std::int32_t* onWeights) noexcept;
[[nodiscard]] bool BlendAcross16(std::byte* at, std::ptrdiff_t step, const Pixel16& back,
                                 const Pixel16& on, const std::int32_t* backWeights,
                                 const std::int32_t* onWeights) noexcept;
