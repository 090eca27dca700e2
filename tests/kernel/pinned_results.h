// Results of the kernels that never change, in any build and on any platform.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "tests/judge/judge.h"
#include "tests/kernel/random_pictures.h"

/// What the kernels make of one picture with one set of values.
struct PinnedResult {
    const char* what;
    IndexPicture (*draw)();
    judge::Values values;
    std::array<std::uint64_t, 3> checksums;  ///< 8 bit, 16 bit, float
};

/// All of them; each of the nine kernels is among them twice.
std::span<const PinnedResult> PinnedResults();

/// The input picture: `P` is judge::Pixel8, Pixel16 or PixelFloat.
template <typename P>
judge::Picture<P> PinnedPicture(const PinnedResult& result);

/// FNV-1a over the pixels' bytes, row by row.
template <typename P>
std::uint64_t Checksum(const judge::Picture<P>& picture) {
    std::uint64_t sum = 14695981039346656037u;
    const auto* bytes = reinterpret_cast<const unsigned char*>(picture.pixels.data());
    for (std::size_t i = 0; i < picture.pixels.size() * sizeof(P); ++i)
        sum = (sum ^ bytes[i]) * 1099511628211u;
    return sum;
}
