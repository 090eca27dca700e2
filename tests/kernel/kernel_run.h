// Runs a kernel on a picture of the tests.
#pragma once

#include <cstring>

#include <gtest/gtest.h>

#include "kernel/dispatch_kernel.h"
#include "tests/judge/judge.h"
#include "tests/kernel/world_host.h"

template <typename P>
constexpr PF_PixelFormat FormatOf() {
    return sizeof(P) == 4   ? PF_PixelFormat_ARGB32
           : sizeof(P) == 8 ? PF_PixelFormat_ARGB64
                            : PF_PixelFormat_ARGB128;
}

inline EffectValues ToEffectValues(const judge::Values& v) {
    return {v.colorThreshold, v.softness, v.bias,         v.colorKeyEnable, v.keyRed,
            v.keyGreen,       v.keyBlue,  v.keyThreshold, v.keyInvert};
}

/// The output of the kernel for this pixel type and these values, with one instruction set. Fails the test
/// when the kernel fails, touches the input or anything around the images, or keeps something of the host's.
/// `seed` chooses the images' layouts.
template <typename P>
judge::Picture<P> RunKernel(const judge::Values& values, const judge::Picture<P>& picture, std::uint64_t seed,
                            InstructionSet instructionSet) {
    Dice dice(seed);
    constexpr PF_PixelFormat format = FormatOf<P>();
    standalone::World input(format, picture.width, picture.height, RandomStyle(format, dice));
    standalone::World output(format, picture.width, picture.height, RandomStyle(format, dice));
    const auto rowSize = static_cast<std::size_t>(picture.width) * sizeof(P);
    for (int y = 0; y < picture.height; ++y) std::memcpy(input.row<P>(y), &picture.at(0, y), rowSize);

    WorldHost host(seed);
    const RenderJob job = {ToEffectValues(values), host.inData(), format, &input.record(), &output.record()};
    EXPECT_EQ(DispatchKernel(job, instructionSet), PF_Err_NONE);
    EXPECT_TRUE(host.balanced());
    EXPECT_TRUE(input.guardsIntact() && output.guardsIntact());

    judge::Picture<P> result(picture.width, picture.height);
    for (int y = 0; y < picture.height; ++y) {
        EXPECT_EQ(std::memcmp(input.row<P>(y), &picture.at(0, y), rowSize), 0)
            << "input row " << y << " was written";
        std::memcpy(&result.at(0, y), output.row<P>(y), rowSize);
    }
    return result;
}

/// The same with every instruction set of this processor; all must give the same bytes.
template <typename P>
judge::Picture<P> RunKernel(const judge::Values& values, const judge::Picture<P>& picture,
                            std::uint64_t seed) {
    judge::Picture<P> plain = RunKernel(values, picture, seed, InstructionSet::plain);
    for (const InstructionSet set : allInstructionSets) {
        if (set == InstructionSet::plain || set > BestInstructionSet()) continue;
        const judge::Picture<P> fast = RunKernel(values, picture, seed, set);
        EXPECT_EQ(std::memcmp(fast.pixels.data(), plain.pixels.data(), plain.pixels.size() * sizeof(P)), 0)
            << "instruction set " << static_cast<int>(set) << ", seed " << seed;
    }
    return plain;
}
