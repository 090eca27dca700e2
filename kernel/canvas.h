// The two images of a kernel call: every pixel the pass reads and every blend it makes goes through here.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <span>

#include "kernel/color_key.h"
#include "kernel/image_view.h"
#include "kernel/offset.h"
#include "kernel/processor.h"

/// Blends keyed pixels of the input into the output, which starts as a copy of the input.
template <typename Depth, KeyMode mode>
class Canvas {
  public:
    using Pixel = typename Depth::Pixel;
    using Weight = typename Depth::Weights::Weight;

    Canvas(const ImageView<const Pixel>& input, const ImageView<Pixel>& output,
           const ColorKey<Depth, mode>& key)
        : input_(input), output_(output), key_(key) {
        assert(input.width() == output.width() && input.height() == output.height());
    }

    [[nodiscard]] int width() const { return input_.width(); }
    [[nodiscard]] int height() const { return input_.height(); }
    [[nodiscard]] bool contains(int x, int y) const { return input_.contains(x, y); }

    /// Asks for a pixel of both images to be brought into the cache.
    void prefetch([[maybe_unused]] int x, [[maybe_unused]] int y) const noexcept {
#ifdef NEVREL_X64
        _mm_prefetch(reinterpret_cast<const char*>(&input_.at(x, y)), _MM_HINT_T0);
        _mm_prefetch(reinterpret_cast<const char*>(&output_.at(x, y)), _MM_HINT_T0);
#endif
    }

    /// The input pixel, keyed.
    [[nodiscard]] Pixel source(int x, int y) const noexcept { return key_.applyKey(input_.at(x, y)); }

    /// Blends a source pixel into the output at (x, y).
    void blend(int x, int y, const Pixel& src, Weight weight) const noexcept {
        Depth::blend(output_.at(x, y), src, weight);
    }

    /// Blends a source pixel into `count` output pixels, from (x, y) on in steps of `step`, each with its own
    /// weight.
    void blendAlong(int x, int y, Offset step, const Pixel& src, const Weight* weights,
                    int count) const noexcept {
        if (count == 0) return;
        assert(contains(x + (count - 1) * step.dx, y + (count - 1) * step.dy));
        const std::ptrdiff_t stride = step.dy * output_.pitch() + step.dx * std::ptrdiff_t{sizeof(Pixel)};
        auto* at = reinterpret_cast<std::byte*>(&output_.at(x, y));
        for (int i = 0; i < count; ++i, at += stride)
            Depth::blend(*reinterpret_cast<Pixel*>(at), src, weights[i]);
    }

    /// Blends the source pixel at (sourceX, sourceY) into the output at (x, y).
    void blendFrom(int sourceX, int sourceY, int x, int y, Weight weight) const noexcept {
        blend(x, y, source(sourceX, sourceY), weight);
    }

    /// Moves an output pixel that earlier blends may have changed back towards its own input value.
    void restorePixel(int x, int y, Weight weight) const noexcept { blendFrom(x, y, x, y, weight); }

    /// Averages the output pixel with its direct neighbours in the input.
    void tipAverage(int x, int y, Weight tipWeight) const noexcept {
        std::array<Pixel, 4> neighbours;
        std::size_t count = 0;
        if (x > 0) neighbours[count++] = source(x - 1, y);
        if (x + 1 < width()) neighbours[count++] = source(x + 1, y);
        if (y > 0) neighbours[count++] = source(x, y - 1);
        if (y + 1 < height()) neighbours[count++] = source(x, y + 1);
        Depth::tipAverage(output_.at(x, y), std::span<const Pixel>(neighbours.data(), count), tipWeight);
    }

  private:
    ImageView<const Pixel> input_;
    ImageView<Pixel> output_;
    ColorKey<Depth, mode> key_;
};
