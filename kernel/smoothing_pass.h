// The smoothing pass: visits every pixel of the edge map that carries a straight edge and blends across it.
#pragma once

#include <cstdint>
#include <cstring>

#include "kernel/canvas.h"
#include "kernel/local_fixes.h"
#include "kernel/run_measures.h"

/// One pass over an image. Its result depends on the visiting order, since later blends act on the output of
/// earlier ones; all decisions are taken on the edge map, which stays as it is.
template <typename Depth, KeyMode mode>
class SmoothingPass {
    using Weights = typename Depth::Weights;
    using Ramp = RampState<typename Weights::Weight>;

  public:
    SmoothingPass(const Canvas<Depth, mode>& canvas, const EdgeMap& map, const BlendWeights<Weights>& weights)
        : canvas_(canvas), map_(map), weights_(weights) {}

    /// Rows top to bottom, pixels left to right, blank groups of four passed over.
    void run() const noexcept {
        for (int y = 0; y < map_.height(); ++y) {
            const std::uint8_t* flags = map_.row(y);
            for (int group = 0; group < map_.width(); group += 4) {
                std::uint32_t word = 0;
                std::memcpy(&word, flags + group, sizeof word);
                if (word == 0) continue;
                for (int x = group; x < group + 4; ++x) {
                    if ((flags[x] & (EdgeRight | EdgeDown)) != 0) visit(x, y);
                }
            }
        }
    }

  private:
    enum class Blended { no, run, thinLine };

    void visit(int x, int y) const noexcept {
        const Neighbourhood at(map_, x, y);
        bool thinBlended = false;
        if (at.R(0, 0)) thinBlended |= treatVerticalPiece(at);
        if (at.D(0, 0)) thinBlended |= treatHorizontalPiece(at);
        if (!thinBlended) treatTip(at);
        JunctionBlend(canvas_, at, Weights::sixth);
    }

    /// Returns whether a thin line was blended.
    bool treatVerticalPiece(const Neighbourhood& at) const noexcept {
        const int x = at.x();
        const int y = at.y();
        const Blended left = blendSide<Side::left>(x, y);
        const Blended right = blendSide<Side::right>(x, y);
        const bool stairs = at.R(0, 1) && !at.D(0, 0) && !at.D(1, 0) &&
                            StaircaseBlend(canvas_, map_, weights_, horizontalStaircases, x, y);
        if (!stairs) {
            CornerBlend(canvas_, at, weights_.cornerWeight, left != Blended::no, right != Blended::no);
        }
        RestoreFound(canvas_, at, VerticalPieceNotch(at), Weights::half);
        return left == Blended::thinLine || right == Blended::thinLine;
    }

    /// Returns whether a thin line was blended.
    bool treatHorizontalPiece(const Neighbourhood& at) const noexcept {
        const int x = at.x();
        const int y = at.y();
        const Blended up = blendSide<Side::up>(x, y);
        const Blended down = blendSide<Side::down>(x, y);
        if (at.D(-1, 0) && !at.R(-1, 0) && !at.R(-1, 1)) {
            StaircaseBlend(canvas_, map_, weights_, verticalStaircases, x, y);
        }
        RestoreFound(canvas_, at, HorizontalPieceNotch(at), Weights::half);
        if (at.R(0, 0)) RestoreFound(canvas_, at, CornerNotch(at), Weights::half);
        return up == Blended::thinLine || down == Blended::thinLine;
    }

    void treatTip(const Neighbourhood& at) const noexcept {
        if (TipShape(at)) {
            canvas_.averageTip(at.x(), at.y(), weights_.tipWeight);
        } else {
            RestoreFound(canvas_, at, TipNotch(at), Weights::threeQuarters);
        }
    }

    template <Side side>
    Blended blendSide(int x, int y) const noexcept {
        if (const int run = RunLength<side>(map_, x, y); run > 0) {
            walkRamp<side>(weights_.runRamp(run, LengthFactor<side>(map_, run, x, y, weights_.softness())), x,
                           y);
            return Blended::run;
        }
        if (const int line = ThinLineLength<side>(map_, x, y); line > 0) {
            walkRamp<side>(weights_.thinLineRamp(line), x, y);
            return Blended::thinLine;
        }
        return Blended::no;
    }

    /// Blends the pixel behind the piece into the pixels before it, for as long as the ramp and the image
    /// last.
    template <Side side>
    void walkRamp(Ramp ramp, int x, int y) const noexcept {
        constexpr int step = StepOf(side);
        constexpr int stepX = IsHorizontal(side) ? step : 0;
        constexpr int stepY = IsHorizontal(side) ? 0 : step;
        // The piece lies between (x, y) and the next pixel right or down; the walk starts on its own side of
        // it.
        int toX = x + (stepX > 0 ? 1 : 0);
        int toY = y + (stepY > 0 ? 1 : 0);
        const auto source = canvas_.source(toX - stepX, toY - stepY);
        for (; !ramp.done && canvas_.contains(toX, toY); toX += stepX, toY += stepY) {
            canvas_.blend(toX, toY, source, RampWeight(ramp));
        }
    }

    Canvas<Depth, mode> canvas_;
    EdgeMap map_;
    BlendWeights<Weights> weights_;
};
