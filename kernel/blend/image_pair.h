// The two images of a kernel call: every pixel that the pass reads and every blend that it makes
// goes through here.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "kernel/blend/ramp.h"
#include "kernel/pixels/color_key.h"
#include "kernel/pixels/image_view.h"

/// How many pixels BlendAcross blends on each side of a piece.
inline constexpr int acrossReach = 4;

/// A form of the blend across a piece: blends `back` into the pixel at `at` and those before it,
/// and `on` into those after it, each by the next weight, the nearest pixel's first. The pixels lie
/// `step` bytes apart. Does nothing and returns false where that can't be done all at once.
template <typename Pixel, typename Weight>
using BlendAcross = bool(std::byte* at, std::ptrdiff_t step, const Pixel& back, const Pixel& on,
                         const Weight* backWeights, const Weight* onWeights);

/// Blends keyed pixels of the input into the output, which starts as a copy of the input.
template <typename Depth, KeyMode mode>
class ImagePair {
  public:
    using Pixel = typename Depth::Pixel;
    using Weight = typename Depth::Weights::Weight;

    /// `markPixels` may be null.
    ImagePair(const ImageView<const Pixel>& input, const ImageView<Pixel>& output,
              const ColorKey<Depth, mode>& key, MarkPixels<Pixel>* markPixels)
        : input_(input), output_(output), key_(key), markPixels_(markPixels) {
        assert(input.width() == output.width() && input.height() == output.height());
    }

    [[nodiscard]] int width() const { return input_.width(); }
    [[nodiscard]] int height() const { return input_.height(); }
    [[nodiscard]] bool contains(int x, int y) const { return input_.contains(x, y); }

    /// Whether the pixels of its row and column that are up to `margin` away are there as well.
    [[nodiscard]] bool isInside(int x, int y, int margin) const {
        return x >= margin && x < width() - margin && y >= margin && y < height() - margin;
    }

    /// Asks for a pixel of both images to be brought into the cache.
    void prefetch(int x, int y) const noexcept {
        Prefetch(&input_.at(x, y));
        Prefetch(&output_.at(x, y));
    }

    /// The input pixel, keyed.
    [[nodiscard]] Pixel source(int x, int y) const noexcept {
        return key_.applyKey(input_.at(x, y));
    }

    /// A straight way across the output and the source pixel that is blended along it, in bytes
    /// from a pixel.
    struct Path {
        std::ptrdiff_t source;  ///< in the input
        std::ptrdiff_t first;   ///< the pixel at which the way begins
        std::ptrdiff_t step;    ///< from pixel to pixel
    };
    [[nodiscard]] Path path(Offset source, Offset first, Offset step) const {
        const auto bytes = [](Offset offset, std::ptrdiff_t pitch) {
            return offset.dy * pitch + offset.dx * std::ptrdiff_t{sizeof(Pixel)};
        };
        return {bytes(source, input_.pitch()), bytes(first, output_.pitch()),
                bytes(step, output_.pitch())};
    }

    /// Blends along a path from (x, y) with the weights of a ramp, from pixel `done` to pixel
    /// `room` at most.
    void blendAlong(const Path& path, int x, int y, const Ramp<Weight>& ramp, int done,
                    int room) const noexcept {
        assert(done >= 0 && room > 0);
        const Pixel src = source(path, x, y);
        auto* first = outputByte(x, y) + path.first;
        const auto blend = [first, &path, &src](int i, Weight weight) {
            Depth::blend(*reinterpret_cast<Pixel*>(first + i * path.step), src, weight);
        };
        // The kept weights have a loop of their own, in which nothing is asked of the rest: a fifth
        // less time.
        const int kept = std::min(ramp.count, room);
        int i = done;
        for (; i < kept; ++i) blend(i, ramp.weights[static_cast<std::size_t>(i)]);
        RampState<Weight> rest = ramp.rest;
        for (; i < room && !rest.done; ++i) blend(i, RampWeight(rest));
    }

    /// Blends along two paths that part between (x, y) and the pixel after it, acrossReach pixels
    /// each, with a form for that. Returns false where it did nothing.
    [[nodiscard]] bool blendAcross(BlendAcross<Pixel, Weight>* blend, const Path& back,
                                   const Path& on, int x, int y, const Ramp<Weight>& backRamp,
                                   const Ramp<Weight>& onRamp) const noexcept {
        assert(isInside(x, y, acrossReach));
        return blend(outputByte(x, y), on.step, source(back, x, y), source(on, x, y),
                     backRamp.weights.data(), onRamp.weights.data());
    }

    /// Blends down a staircase: each pixel from `from` on into the one as far from `to`, and back
    /// towards its own value where a restoring ramp is given. Ends with the ramp or at the image's
    /// edge.
    void blendStairs(Offset from, Offset to, Offset step, const Ramp<Weight>& ramp,
                     const Ramp<Weight>* restoring) const noexcept {
        RampWalk<Weight> weights(ramp);
        RampWalk<Weight> restoringWeights(restoring != nullptr ? *restoring : ramp);
        for (; !weights.done() && contains(to.dx, to.dy) && contains(from.dx, from.dy);
             from = from + step, to = to + step) {
            blendFrom(from.dx, from.dy, to.dx, to.dy, weights.next());
            if (restoring != nullptr) restorePixel(from.dx, from.dy, restoringWeights.next());
        }
    }

    /// Blends the source pixel at (sourceX, sourceY) into the output at (x, y).
    void blendFrom(int sourceX, int sourceY, int x, int y, Weight weight) const noexcept {
        Depth::blend(output_.at(x, y), source(sourceX, sourceY), weight);
    }

    /// Moves an output pixel that earlier blends may have changed back towards its own input value.
    void restorePixel(int x, int y, Weight weight) const noexcept { blendFrom(x, y, x, y, weight); }

    /// Averages output pixels of a row with their direct neighbours in the input: those at columns
    /// x + i where bit i of `tips` is set.
    void averageTips(std::uint64_t tips, int x, int y, Weight tipWeight) const noexcept {
        if constexpr (mode != KeyMode::NoKey) {
            constexpr int manyTips = 24;  // of fewer the copy takes longer than it saves
            if (markPixels_ != nullptr && std::popcount(tips) >= manyTips) {
                averageFromCopy(tips, x, y, tipWeight);
                return;
            }
        }
        for (; tips != 0; tips &= tips - 1) tipAverage(x + std::countr_zero(tips), y, tipWeight);
    }

  private:
    void tipAverage(int x, int y, Weight tipWeight) const noexcept {
        typename Depth::TipSums sums;
        const auto share = Depth::tipShare(tipWeight);
        for (const Offset next : {Offset{-1, 0}, Offset{1, 0}, Offset{0, -1}, Offset{0, 1}}) {
            if (contains(x + next.dx, y + next.dy))
                sums.add(source(x + next.dx, y + next.dy), share);
        }
        if (!(sums.weight > 0)) return;
        Pixel& centre = output_.at(x, y);
        sums.add(centre, Depth::tipShare(Depth::Weights::one));
        Depth::setAverage(centre, sums);
    }

    // Averages tips from a marking copy of the pixels around them: keys each only once, and without
    // a branch that depends on it.
    void averageFromCopy(std::uint64_t tips, int x, int y, Weight tipWeight) const noexcept {
        const int left = std::max(x + std::countr_zero(tips) - 1, 0);
        const int end = x + 64 - std::countl_zero(tips);
        const int columns = std::min(end + 1, width()) - left;
        const int top = std::max(y - 1, 0);
        const int rows = std::min(y + 2, height()) - top;
        Pixel marked[3 * (64 + 2)];
        const ImageView<Pixel> copy(marked, columns * std::ptrdiff_t{sizeof(Pixel)}, columns, rows);
        MarkingCopy(key_, input_.part(left, top, columns, rows), copy, markPixels_);
        ImagePair<Depth, KeyMode::NoKey>({marked, copy.pitch(), columns, rows},
                                         output_.part(left, top, columns, rows),
                                         ColorKey<Depth, KeyMode::NoKey>({}), nullptr)
            .averageTips(tips, x - left, y - top, tipWeight);
    }

    [[nodiscard]] Pixel source(const Path& path, int x, int y) const noexcept {
        const auto* at = reinterpret_cast<const std::byte*>(&input_.at(x, y)) + path.source;
        return key_.applyKey(*reinterpret_cast<const Pixel*>(at));
    }
    [[nodiscard]] std::byte* outputByte(int x, int y) const {
        return reinterpret_cast<std::byte*>(&output_.at(x, y));
    }

    ImageView<const Pixel> input_;
    ImageView<Pixel> output_;
    ColorKey<Depth, mode> key_;
    MarkPixels<Pixel>* markPixels_;  // may be null
};
