// What the smoothing pass does at one pixel.
#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>

#include "kernel/canvas.h"
#include "kernel/ramp_table.h"
#include "kernel/run_measures.h"
#include "kernel/sides.h"
#include "kernel/staircases.h"
#include "kernel/step_masks.h"

/// The steps at one pixel, in their fixed order; later ones act on what earlier ones have left.
template <typename Depth, KeyMode mode>
class PixelVisit {
    using Weights = typename Depth::Weights;
    using Weight = typename Weights::Weight;
    using Ramp = RampState<Weight>;

  public:
    /// The pixel is the given bit of the given window of the masks.
    PixelVisit(const Canvas<Depth, mode>& canvas, const EdgeMap& map, const BlendWeights<Weights>& weights,
               RampTable<Weights>& ramps, const StepMasks& steps, int window, int bit, int x, int y)
        : canvas_(canvas),
          map_(map),
          weights_(weights),
          ramps_(ramps),
          steps_(steps),
          window_(window),
          bit_(bit),
          x_(x),
          y_(y) {}

    void run() noexcept {
        if (applies(steps_.anyVertical)) treatVerticalPiece();
        if (applies(steps_.anyHorizontal)) treatHorizontalPiece();
        if (applies(steps_.anyTip) && !thinBlended_) treatTip();
        if (applies(steps_.anyJunction)) junctionBlend();
    }

  private:
    enum class Blended { no, run, thinLine };

    [[nodiscard]] bool applies(const StepMask& step) const { return step.test(window_, bit_); }

    void treatVerticalPiece() noexcept {
        const Blended left = blendSide<Side::left>();
        const Blended right = blendSide<Side::right>();
        const bool stairs = applies(steps_.anyHorizontalStaircase);
        if (stairs) staircaseBlend(horizontalStaircases, steps_.horizontalStaircase);
        if (!stairs && applies(steps_.corner)) cornerBlend(left, right);
        notchRestore(steps_.verticalNotch, verticalNotchPixel);
    }

    void treatHorizontalPiece() noexcept {
        blendSide<Side::up>();
        blendSide<Side::down>();
        if (applies(steps_.anyVerticalStaircase))
            staircaseBlend(verticalStaircases, steps_.verticalStaircase);
        notchRestore(steps_.horizontalNotch, horizontalNotchPixel);
        notchRestore(steps_.cornerNotch, cornerNotchPixel);
    }

    void treatTip() noexcept {
        if (applies(steps_.tip)) {
            canvas_.tipAverage(x_, y_, weights_.tipWeight);
        } else {
            tipRestore();
        }
    }

    // A pixel of column 0 is never restored: the patterns that restore the pixel itself need an edge flag of
    // the column on its left.
    void tipRestore() noexcept {
        if (applies(steps_.aboveTip) && x_ <= map_.width() - 4 && y_ >= 3) {
            canvas_.restorePixel(x_ + 1, y_ - 1, Weights::threeQuarters);
        } else if (applies(steps_.besideTip)) {
            canvas_.restorePixel(x_, y_, Weights::threeQuarters);
        }
    }

    void junctionBlend() noexcept {
        for (std::size_t i = 0; i < junctions.size(); ++i) {
            if (!applies(steps_.junction[i])) continue;
            const auto& [from, into] = junctions[i];
            canvas_.blendFrom(x_ + from.dx, y_ + from.dy, x_ + into.dx, y_ + into.dy, Weights::sixth);
        }
    }

    // A light blend across a piece, from each side that got no ramp.
    void cornerBlend(Blended left, Blended right) noexcept {
        if (right == Blended::no) canvas_.blendFrom(x_, y_, x_ + 1, y_, weights_.cornerWeight);
        if (left == Blended::no) canvas_.blendFrom(x_ + 1, y_, x_, y_, weights_.cornerWeight);
    }

    // Restores the pixel of the first pattern that applies.
    template <std::size_t count>
    void notchRestore(const StepMask (&patterns)[count], const std::array<Offset, count>& restored) noexcept {
        for (std::size_t i = 0; i < count; ++i) {
            if (!applies(patterns[i])) continue;
            canvas_.restorePixel(x_ + restored[i].dx, y_ + restored[i].dy, Weights::half);
            return;
        }
    }

    template <Side side>
    Blended blendSide() noexcept {
        constexpr auto index = static_cast<std::size_t>(side);
        if (applies(steps_.run[index])) {
            if (const int run = RunLength<side>(map_, x_, y_); run > 0) {
                walkRamp<side>(ramps_.run(run, LengthFactor<side>(map_, run, x_, y_, weights_.softness())));
                return Blended::run;
            }
        }
        if (applies(steps_.line[index])) {
            walkRamp<side>(ramps_.thinLine(ThinLineLength<side>(map_, x_, y_)));
            thinBlended_ = true;
            return Blended::thinLine;
        }
        return Blended::no;
    }

    // Blends the pixel behind the piece into the pixels before it, for as long as the ramp and the image
    // last.
    template <Side side>
    void walkRamp(const KeptRamp<Weight>& ramp) noexcept {
        constexpr Offset step = AlongSide<side>(StepOf(side), 0);
        // The piece lies between (x, y) and the next pixel right or down.
        const int toX = x_ + (step.dx > 0 ? 1 : 0);
        const int toY = y_ + (step.dy > 0 ? 1 : 0);
        const int room = roomAlong<side>(toX, toY);
        const auto source = canvas_.source(toX - step.dx, toY - step.dy);
        const int count = std::min(ramp.count, room);
        canvas_.blendAlong(toX, toY, step, source, ramp.weights.data(), count);
        Ramp rest = ramp.rest;
        for (int i = count; !rest.done && i < room; ++i) {
            canvas_.blend(toX + i * step.dx, toY + i * step.dy, source, RampWeight(rest));
        }
    }

    // The pixels from (x, y) to the image's edge on that side.
    template <Side side>
    [[nodiscard]] int roomAlong(int x, int y) const {
        switch (side) {
            case Side::left:
                return x + 1;
            case Side::right:
                return map_.width() - x;
            case Side::up:
                return y + 1;
            default:
                return map_.height() - y;
        }
    }

    void staircaseBlend(const std::array<StaircaseVariant, 4>& variants,
                        const StepMask (&masks)[4]) noexcept {
        for (std::size_t i = 0; i < variants.size(); ++i) {
            if (!applies(masks[i])) continue;
            walkStaircase(variants[i], StaircaseLength(variants[i], map_, x_, y_));
        }
    }

    // A staircase's ramp ends within its cells, but for very long ones; those end at the image's edge.
    void walkStaircase(const StaircaseVariant& variant, int length) noexcept {
        assert(length >= shortestStaircase);
        Ramp ramp = weights_.staircaseRamp(length);
        Ramp restoring = weights_.restoringRamp(length);
        int toX = x_ + variant.destination.dx;
        int toY = y_ + variant.destination.dy;
        int fromX = x_ + variant.source.dx;
        int fromY = y_ + variant.source.dy;
        while (!ramp.done && canvas_.contains(toX, toY) && canvas_.contains(fromX, fromY)) {
            canvas_.blendFrom(fromX, fromY, toX, toY, RampWeight(ramp));
            if (variant.restores) canvas_.restorePixel(fromX, fromY, RampWeight(restoring));
            toX += variant.step.dx;
            toY += variant.step.dy;
            fromX += variant.step.dx;
            fromY += variant.step.dy;
        }
    }

    const Canvas<Depth, mode>& canvas_;
    const EdgeMap& map_;
    const BlendWeights<Weights>& weights_;
    RampTable<Weights>& ramps_;
    const StepMasks& steps_;
    int window_;
    int bit_;
    int x_;
    int y_;
    bool thinBlended_ = false;
};
