// The steps of the smoothing pass at one pixel.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "kernel/blend/image_pair.h"
#include "kernel/blend/ramp.h"
#include "kernel/shapes/findings.h"
#include "kernel/shapes/pattern_table.h"
#include "kernel/shapes/runs.h"
#include "kernel/shapes/sides.h"
#include "kernel/shapes/staircases.h"

/// Takes steps. The pixels across a piece are blended at once where there is a form for that and it
/// can; elsewhere one after the other, as it is defined.
template <typename Depth, KeyMode mode>
class PixelSteps {
    using Pixel = typename Depth::Pixel;
    using Weights = typename Depth::Weights;
    using Weight = typename Weights::Weight;
    using Ramp = ::Ramp<Weight>;

  public:
    PixelSteps(const ImagePair<Depth, mode>& images, const EdgeMap& map,
               const BlendWeights<Weights>& weights, BlendAcross<Pixel, Weight>* blendAcross)
        : images_(images),
          map_(map),
          weights_(weights),
          blendAcross_(blendAcross),
          ways_{way<Side::left>(), way<Side::right>(), way<Side::up>(), way<Side::down>()},
          settled_(weights) {}

    /// Takes one step at pixel (x, y), whose findings are given.
    void take(Step step, const FindingsAt& at, int x, int y) noexcept {
        if (step == Step::verticalRamps || step == Step::horizontalRamps) {
            blendPiece(at, step == Step::verticalRamps ? Side::left : Side::up, x, y);
        } else {
            fix(step, at, x, y);
        }
    }

    /// Averages tips of a row: bit i stands for column x + i.
    void averageTips(std::uint64_t tips, int x, int y) noexcept {
        images_.averageTips(tips, x, y, weights_.tipWeight);
    }

  private:
    /// How a ramp goes out from a piece.
    struct Way {
        typename ImagePair<Depth, mode>::Path path;
        // The pixels from the first one of the path to the image's edge are room + x * perX + y *
        // perY.
        int room;
        int perX;
        int perY;
    };

    template <Side side>
    [[nodiscard]] Way way() const {
        constexpr int step = StepOf(side);
        constexpr Offset along = AlongSide<side>(step, 0);
        constexpr Offset next = AlongSide<side>(1, 0);
        const int size = IsHorizontal(side) ? map_.width() : map_.height();
        if constexpr (step < 0) return {images_.path(next, {0, 0}, along), 1, -along.dx, -along.dy};
        return {images_.path({0, 0}, next, along), size - 1, -along.dx, -along.dy};
    }

    // Blends the pixel on either side of a piece into those on the other, for as long as the ramps
    // and the image last. The sides are left and right, or up and down.
    void blendPiece(const FindingsAt& at, Side first, int x, int y) noexcept {
        const auto side = static_cast<std::size_t>(first);
        const Ramp& back = ramp(at, side, x, y);
        const Ramp& on = ramp(at, side + 1, x, y);
        int done = 0;
        if (blendAcross_ != nullptr && images_.isInside(x, y, acrossReach) &&
            images_.blendAcross(blendAcross_, ways_[side].path, ways_[side + 1].path, x, y, back,
                                on)) {
            if (std::max(back.count, on.count) <= acrossReach) return;
            done = acrossReach;
        }
        blendOn(ways_[side], back, done, x, y);
        blendOn(ways_[side + 1], on, done, x, y);
    }

    [[nodiscard]] static int room(const Way& way, int x, int y) {
        return way.room + way.perX * x + way.perY * y;
    }

    // What is left of a ramp of which some pixels are done.
    void blendOn(const Way& way, const Ramp& ramp, int done, int x, int y) noexcept {
        images_.blendAlong(way.path, x, y, ramp, done, room(way, x, y));
    }

    [[nodiscard]] const Ramp& ramp(const FindingsAt& at, std::size_t side, int x, int y) noexcept {
        const auto kind = static_cast<RampKind>(at.numberIn(at.findings.rampKind[side]));
        if (kind != RampKind::measured) return settled_.of(kind);
        return measuredRamp(at, side, x, y);
    }

    [[nodiscard]] const Ramp& measuredRamp(const FindingsAt& at, std::size_t side, int x,
                                           int y) noexcept {
        switch (static_cast<Side>(side)) {
            case Side::left:
                return measuredRamp<Side::left>(at, x, y);
            case Side::right:
                return measuredRamp<Side::right>(at, x, y);
            case Side::up:
                return measuredRamp<Side::up>(at, x, y);
            default:
                return measuredRamp<Side::down>(at, x, y);
        }
    }

    template <Side side>
    [[nodiscard]] const Ramp& measuredRamp(const FindingsAt& at, int x, int y) noexcept {
        constexpr std::size_t end = StepOf(side) < 0 ? 0 : 1;
        if (!at.isIn(at.findings.run[static_cast<std::size_t>(side)])) {
            const int n = ThinLineLength<side>(map_, x, y);
            return thinLines_[end].find(n, 0, [&] { return weights_.thinLineRamp(n); });
        }
        const int n = RunLength<side>(map_, x, y);
        const std::int64_t percent = LengthFactor<side>(map_, n, x, y, weights_.softness());
        return runs_[end].find(n, percent, [&] { return weights_.runRamp(n, percent); });
    }

    void fix(Step step, const FindingsAt& at, int x, int y) noexcept {
        const Findings& found = at.findings;
        switch (step) {
            case Step::verticalFixes:
                blendStaircases(at.numberIn(found.horizontalStaircase), horizontalStaircases, x, y);
                restoreFirst(at.numberIn(found.verticalNotch), verticalNotches, x, y,
                             Weights::half);
                break;
            case Step::horizontalFixes:
                blendStaircases(at.numberIn(found.verticalStaircase), verticalStaircases, x, y);
                restoreFirst(at.numberIn(found.horizontalNotch), horizontalNotches, x, y,
                             Weights::half);
                restoreFirst(at.numberIn(found.cornerNotch), cornerNotches, x, y, Weights::half);
                break;
            default:
                treatTip(at, x, y);
                blendJunctions(at.numberIn(found.junction), x, y);
        }
    }

    void blendStaircases(unsigned found, const std::array<StaircaseVariant, 4>& variants, int x,
                         int y) noexcept {
        for (; found != 0; found &= found - 1) {
            const StaircaseVariant& variant =
                variants[static_cast<std::size_t>(std::countr_zero(found))];
            const int n = StaircaseLength(variant, map_, x, y);
            const Ramp& ramp = staircases_.find(n, 0, [&] { return weights_.staircaseRamp(n); });
            const Ramp* restoring = nullptr;
            if (variant.restores)
                restoring = &restoring_.find(n, 0, [&] { return weights_.restoringRamp(n); });
            const Offset at{x, y};
            images_.blendStairs(at + variant.source, at + variant.destination, variant.step, ramp,
                                restoring);
        }
    }

    // Of the patterns found, the bits of a number, the first has its effect.
    void restoreFirst(unsigned found, std::span<const Pattern> patterns, int x, int y,
                      Weight weight) noexcept {
        if (found == 0) return;
        blend(patterns[static_cast<std::size_t>(std::countr_zero(found))], x, y, weight);
    }

    // A pixel of column 0 is never restored: the patterns that restore the pixel itself need an
    // edge flag of the column on its left.
    void treatTip(const FindingsAt& at, int x, int y) noexcept {
        if (at.isIn(at.findings.tip)) {
            averageTips(1, x, y);
            return;
        }
        const bool roomForFirst = x <= map_.width() - 4 && y >= 3;
        const unsigned found = at.numberIn(at.findings.tipRestore) & (roomForFirst ? ~0U : ~1U);
        restoreFirst(found, tipRestores, x, y, Weights::threeQuarters);
    }

    void blendJunctions(unsigned found, int x, int y) noexcept {
        for (; found != 0; found &= found - 1) {
            blend(junctions[static_cast<std::size_t>(std::countr_zero(found))], x, y,
                  Weights::sixth);
        }
    }

    void blend(const Pattern& pattern, int x, int y, Weight weight) noexcept {
        images_.blendFrom(x + pattern.source.dx, y + pattern.source.dy, x + pattern.target.dx,
                          y + pattern.target.dy, weight);
    }

    const ImagePair<Depth, mode>& images_;
    const EdgeMap& map_;
    const BlendWeights<Weights>& weights_;
    BlendAcross<Pixel, Weight>* blendAcross_;  // may be null
    std::array<Way, 4> ways_;                  // by side
    SettledRamps<Weights> settled_;
    // Of the two sides of a piece, whose ramps are held at once.
    std::array<RampCache<Weight>, 2> runs_;
    std::array<RampCache<Weight>, 2> thinLines_;
    RampCache<Weight> staircases_;
    RampCache<Weight> restoring_;
};
