// Runs a kernel on a picture of the tests.
#pragma once

#include <cstring>

#include <gtest/gtest.h>

#include "host_kit/command.h"
#include "kernel/dispatch_kernel.h"
#include "tests/judge/judge.h"
#include "tests/kernel/dice.h"

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

/// Any row pitch, padded or negative, aligned to the channel type alone; between guards, or in a
/// block that ends where the heap's own checks begin.
inline host_kit::MemoryStyle RandomStyle(PF_PixelFormat format, Dice& dice) {
    const A_long channel = host_kit::PixelBytes(format) / 4;
    return {.padding = dice.oneIn(3) ? 0 : channel * dice.between(1, 40),
            .misalignment = channel * dice.below(4),
            .bottomUp = dice.oneIn(4),
            .guarded = dice.oneIn(4),
            .seed = static_cast<std::uint32_t>(dice.below(1 << 30))};
}

/// Runs the kernel as a render command does; returns its code. Fails the test when the kernel keeps
/// something of the host's or writes outside an image.
inline PF_Err RunIn(host_kit::Host& host, const EffectValues& values, PF_PixelFormat format,
                    host_kit::World& input, host_kit::World& output,
                    InstructionSet instructionSet = BestInstructionSet()) {
    host_kit::Command command(host, PF_Cmd_RENDER);
    command.lendImages(input, &output);
    const RenderJob job = {values, &command.inData, format, &input.record(), &output.record()};
    const PF_Err code = DispatchKernel(job, instructionSet);
    EXPECT_EQ(host.accounts.complaints(), "");
    EXPECT_TRUE(input.guardsIntact() && output.guardsIntact());
    return code;
}

/// The output of the kernel for this pixel type and these values, with one instruction set. Fails
/// the test when the kernel fails or touches the input, too. `seed` chooses how the images lie in
/// memory.
template <typename P>
judge::Picture<P> RunKernel(const judge::Values& values, const judge::Picture<P>& picture,
                            std::uint64_t seed, InstructionSet instructionSet) {
    Dice dice(seed);
    constexpr PF_PixelFormat format = FormatOf<P>();
    host_kit::World input(format, picture.width, picture.height, RandomStyle(format, dice));
    host_kit::World output(format, picture.width, picture.height, RandomStyle(format, dice));
    const auto rowSize = static_cast<std::size_t>(picture.width) * sizeof(P);
    for (int y = 0; y < picture.height; ++y)
        std::memcpy(input.row<P>(y), &picture.at(0, y), rowSize);

    host_kit::Host host;
    host.scratchMemory = {.padding = 4 * dice.below(6),
                          .misalignment = 4 * dice.below(4),
                          .guarded = dice.oneIn(2),
                          .seed = static_cast<std::uint32_t>(dice.below(1 << 30))};
    EXPECT_EQ(RunIn(host, ToEffectValues(values), format, input, output, instructionSet),
              PF_Err_NONE);

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
        EXPECT_EQ(
            std::memcmp(fast.pixels.data(), plain.pixels.data(), plain.pixels.size() * sizeof(P)),
            0)
            << "instruction set " << static_cast<int>(set) << ", seed " << seed;
    }
    return plain;
}
