// The way into the nine kernels: one algorithm at three depths, each without colour key, with it
// and with it inverted. This is the core, which knows nothing of any host.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kernel/edges/edge_map.h"
#include "kernel/effect_values.h"
#include "kernel/forms.h"
#include "kernel/pass/progress.h"

/// The depth of both images: Pixel8, Pixel16 or PixelFloat of kernel/pixels/pixel.h.
enum class PixelDepth { bits8, bits16, floats };

/// The input and the output of a kernel, two images of one size and depth that do not overlap. Each
/// has the address of its top left pixel, aligned to a channel, and the bytes from a row to the one
/// below, which may be negative.
struct Images {
    const void* input;
    std::ptrdiff_t inputPitch;
    void* output;
    std::ptrdiff_t outputPitch;
    int width;   ///< in pixels; nothing is done where there are none
    int height;  ///< likewise
};

/// Bytes of scratch memory that smoothing images of this size, not empty, asks for.
[[nodiscard]] std::size_t ScratchBytes(int width, int height) noexcept;

/// The first half of a kernel: makes the output a copy of the input, in which the pixels that the
/// colour key takes out, if there is one, have alpha 0. The forms change nothing but the time.
void CopyInput(PixelDepth depth, const EffectValues& values, const Images& images,
               const Forms& forms = FastestForms()) noexcept;

/// The second half: finds the edges of the output, which the first half or anything that does the
/// same has made, and blends the input into it along them. `scratch` has ScratchBytes, uncleared. A
/// softness of 0 changes nothing. False when `progress` has ended it; the output is then half done.
bool SmoothCopy(PixelDepth depth, const EffectValues& values, const Images& images,
                std::uint8_t* scratch, const Forms& forms = FastestForms(),
                const Progress& progress = {}) noexcept;

/// The edges along which SmoothCopy blends, for whoever wants to see them: fills `scratch`, of
/// ScratchBytes, with those of the output of CopyInput. The images are not empty.
[[nodiscard]] EdgeMap FindEdges(PixelDepth depth, const EffectValues& values, const Images& images,
                                std::uint8_t* scratch,
                                const Forms& forms = FastestForms()) noexcept;
