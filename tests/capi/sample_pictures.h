// Pictures in every order and sample type.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <vector>

#include "tests/capi/sample_kinds.h"
#include "tests/kernel/pinned_results.h"

struct OrderKind {
    nevrel_order order;
    int channels;
    int places[4];  ///< of alpha, red, green and blue
    bool isMultiplied;
};
inline constexpr OrderKind orderKinds[] = {{NEVREL_RGBA, 4, {3, 0, 1, 2}, false},
                                           {NEVREL_ARGB, 4, {0, 1, 2, 3}, false},
                                           {NEVREL_BGRA, 4, {3, 2, 1, 0}, false},
                                           {NEVREL_RGB, 3, {-1, 0, 1, 2}, false},
                                           {NEVREL_RGBA_PREMULTIPLIED, 4, {3, 0, 1, 2}, true}};

/// The bits of alpha, red, green and blue.
using Pixel = std::array<Bits, 4>;

template <typename P>
Pixel BitsOf(const P& p) {
    Pixel bits{};
    const auto* channels = reinterpret_cast<const std::byte*>(&p);
    for (std::size_t c = 0; c < 4; ++c)
        std::memcpy(&bits[c], channels + c * sizeof p.alpha, sizeof p.alpha);
    return bits;
}

/// The top left part of the picture.
inline std::vector<Pixel> DrawPixels(const PinnedResult& pin, const SampleKind& kind, bool opaque,
                                     int width, int height) {
    const auto picture = PinnedPicture<judge::Pixel8>(pin);
    std::vector<Pixel> pixels;
    for (int i = 0; i < width * height; ++i) {
        Pixel pixel = BitsOf(picture.at(i % width, i / width));
        if (opaque) pixel[0] = 255;
        for (Bits& sample : pixel) sample = kind.nearest(sample / 255.0);
        pixels.push_back(pixel);
    }
    return pixels;
}

inline std::vector<std::byte> Pack(const std::vector<Pixel>& pixels, const SampleKind& kind,
                                   const OrderKind& order) {
    const auto bytes = static_cast<std::size_t>(kind.bytes);
    std::vector<std::byte> packed(pixels.size() * static_cast<std::size_t>(order.channels) * bytes);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        for (std::size_t c = 0; c < 4; ++c) {
            const auto sample = static_cast<std::ptrdiff_t>(i) * order.channels + order.places[c];
            if (order.places[c] >= 0)
                std::memcpy(packed.data() + sample * kind.bytes, &pixels[i][c], bytes);
        }
    }
    return packed;
}
