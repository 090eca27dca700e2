// Runs a kernel on a picture of the tests.
#pragma once

#include <cstring>

#include <gtest/gtest.h>

#include "kernel/kernels.h"
#include "tests/judge/judge.h"
#include "tests/kernel/dice.h"
#include "tests/kernel/hostile_image.h"

template <typename P>
constexpr PixelDepth DepthOf() {
    return sizeof(P) == 4   ? PixelDepth::bits8
           : sizeof(P) == 8 ? PixelDepth::bits16
                            : PixelDepth::floats;
}

inline EffectValues ToEffectValues(const judge::Values& v) {
    return {v.colorThreshold, v.softness, v.bias,         v.colorKeyEnable, v.keyRed,
            v.keyGreen,       v.keyBlue,  v.keyThreshold, v.keyInvert};
}

/// The output of the kernel for this pixel type and these values, with one set of forms. Fails the
/// test when the kernel writes anything but the output and its scratch memory. `seed` chooses how
/// they lie in memory.
template <typename P>
judge::Picture<P> RunKernel(const judge::Values& values, const judge::Picture<P>& picture,
                            std::uint64_t seed, const Forms& forms) {
    Dice dice(seed);
    constexpr int channel = sizeof(P) / 4;
    HostileImage<P> input(picture.width, picture.height, RandomLayout(channel, dice));
    HostileImage<P> output(picture.width, picture.height, RandomLayout(channel, dice));
    input.load(picture.pixels.data());
    const Images images{input.row(0),   input.pitch(), output.row(0),
                        output.pitch(), picture.width, picture.height};
    HostileImage<std::uint8_t> scratch(
        static_cast<int>(ScratchBytes(picture.width, picture.height)), 1,
        {.misalignment = 4 * dice.below(4), .guarded = dice.oneIn(2)});
    CopyInput(DepthOf<P>(), ToEffectValues(values), images, forms);
    SmoothCopy(DepthOf<P>(), ToEffectValues(values), images, scratch.row(0), forms);
    EXPECT_TRUE(input.surroundingsIntact() && output.surroundingsIntact() &&
                scratch.surroundingsIntact() && input.holds(picture.pixels.data()));
    judge::Picture<P> result(picture.width, picture.height);
    output.store(result.pixels.data());
    return result;
}

/// The same with all forms that this processor can run; all must give the same bytes.
template <typename P>
judge::Picture<P> RunKernel(const judge::Values& values, const judge::Picture<P>& picture,
                            std::uint64_t seed) {
    const auto usable = UsableForms();
    judge::Picture<P> plain = RunKernel(values, picture, seed, *usable.front());
    for (const Forms* forms : usable.subspan(1)) {
        const judge::Picture<P> fast = RunKernel(values, picture, seed, *forms);
        EXPECT_EQ(
            std::memcmp(fast.pixels.data(), plain.pixels.data(), plain.pixels.size() * sizeof(P)),
            0)
            << forms->name << ", seed " << seed;
    }
    return plain;
}
