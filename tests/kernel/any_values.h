// The kernels with what stored projects, defaults files and hosts can hold beyond the ranges of the
// controls and of the samples: the render ends and keeps to its images, and all forms agree.
#pragma once

#include <bit>
#include <limits>

#include "tests/kernel/kernel_run.h"
#include "tests/kernel/random_pictures.h"

template <typename P>
void RunWithAnyValues(Dice& dice) {
    constexpr int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    const auto any = [&] {
        return dice.oneIn(8) ? dice.any32Bits()
                             : dice.oneOf({least, -1000, -1, 0, 1, 10, 70, 1000, 40'000, most});
    };
    const judge::Values values{any(), any(), any(), dice.below(2), any(),
                               any(), any(), any(), any()};
    auto palette = RandomPalette<P>(RandomValues(true, false, dice), dice);
    if constexpr (std::is_same_v<P, judge::PixelFloat>) {
        for (P& p : palette)
            if (dice.oneIn(8)) p.green = std::bit_cast<float>(dice.any32Bits());
    }
    const int width = dice.oneIn(3) ? dice.between(1, 256) : dice.between(1, 40);
    const int height = dice.between(1, width > 40 ? 4 : 12);
    RunKernel(values, Paint(RandomShapes(width, height, dice), palette),
              static_cast<std::uint64_t>(dice.below(999)));
}
