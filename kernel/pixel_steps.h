// The steps of the smoothing pass at one pixel.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "kernel/canvas.h"
#include "kernel/ramp_table.h"
#include "kernel/run_measures.h"
#include "kernel/sides.h"
#include "kernel/staircases.h"
#include "kernel/step_masks.h"

/// A pixel's place in masks.
struct MaskPlace {
    const StepMasks& masks;
    int window;
    int bit;

    [[nodiscard]] bool isIn(const StepMask& mask) const { return mask.test(window, bit); }
    /// A number from masks of its bits, the lowest first.
    template <std::size_t count>
    [[nodiscard]] unsigned numberIn(const StepMask (&bits)[count]) const {
        unsigned number = 0;
        for (std::size_t i = 0; i < count; ++i) number |= unsigned{isIn(bits[i])} << i;
        return number;
    }
};

/// Takes steps. With vectors the pixels across a piece are blended at once where they can be;
/// without, one after the other, as it is defined.
template <typename Depth, KeyMode mode>
class PixelSteps {
    using Weights = typename Depth::Weights;
    using Weight = typename Weights::Weight;
    using Ramp = KeptRamp<Weight>;

  public:
    PixelSteps(const Canvas<Depth, mode>& canvas, const EdgeMap& map,
               const BlendWeights<Weights>& weights, bool vectors)
        : canvas_(canvas),
          map_(map),
          weights_(weights),
          vectors_(vectors),
          ways_{way<Side::left>(), way<Side::right>(), way<Side::up>(), way<Side::down>()},
          known_(weights) {}

    /// The pixel (x, y) is the place in the masks.
    void take(Step step, const MaskPlace& place, int x, int y) noexcept {
        if (step == Step::verticalRamps || step == Step::horizontalRamps) {
            blendPiece(place, step == Step::verticalRamps ? Side::left : Side::up, x, y);
        } else {
            fix(step, place, x, y);
        }
    }

  private:
    /// How a ramp goes out from a piece.
    struct Way {
        typename Canvas<Depth, mode>::Path path;
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
        if constexpr (step < 0) return {canvas_.path(next, {0, 0}, along), 1, -along.dx, -along.dy};
        return {canvas_.path({0, 0}, next, along), size - 1, -along.dx, -along.dy};
    }

    // Blends the pixel on either side of a piece into those on the other, for as long as the ramps
    // and the image last. The sides are left and right, or up and down.
    void blendPiece(const MaskPlace& place, Side first, int x, int y) noexcept {
        const auto side = static_cast<std::size_t>(first);
        const Ramp& back = ramp(place, side, x, y);
        const Ramp& on = ramp(place, side + 1, x, y);
        int done = 0;
        if (vectors_ && canvas_.isInside(x, y, acrossReach) &&
            canvas_.blendAcross(ways_[side].path, ways_[side + 1].path, x, y, back.weights.data(),
                                on.weights.data())) {
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
        canvas_.blendAlong(way.path, x, y, ramp, done, room(way, x, y));
    }

    [[nodiscard]] const Ramp& ramp(const MaskPlace& place, std::size_t side, int x,
                                   int y) noexcept {
        const auto kind = static_cast<RampKind>(place.numberIn(place.masks.rampKind[side]));
        if (kind != RampKind::measured) return known_.of(kind);
        return measuredRamp(place, side, x, y);
    }

    [[nodiscard]] const Ramp& measuredRamp(const MaskPlace& place, std::size_t side, int x,
                                           int y) noexcept {
        switch (static_cast<Side>(side)) {
            case Side::left:
                return measuredRamp<Side::left>(place, x, y);
            case Side::right:
                return measuredRamp<Side::right>(place, x, y);
            case Side::up:
                return measuredRamp<Side::up>(place, x, y);
            default:
                return measuredRamp<Side::down>(place, x, y);
        }
    }

    template <Side side>
    [[nodiscard]] const Ramp& measuredRamp(const MaskPlace& place, int x, int y) noexcept {
        constexpr std::size_t end = StepOf(side) < 0 ? 0 : 1;
        if (!place.isIn(place.masks.run[static_cast<std::size_t>(side)])) {
            const int n = ThinLineLength<side>(map_, x, y);
            return thinLines_[end].find(n, 0, [&] { return weights_.thinLineRamp(n); });
        }
        const int n = RunLength<side>(map_, x, y);
        const std::int64_t percent = LengthFactor<side>(map_, n, x, y, weights_.softness());
        return runs_[end].find(n, percent, [&] { return weights_.runRamp(n, percent); });
    }

    void fix(Step step, const MaskPlace& place, int x, int y) noexcept {
        const StepMasks& masks = place.masks;
        switch (step) {
            case Step::verticalFixes:
                blendStaircases(place.numberIn(masks.horizontalStaircase), horizontalStaircases, x,
                                y);
                restoreNotch(place.numberIn(masks.verticalNotch), verticalNotchPixel, x, y);
                break;
            case Step::horizontalFixes:
                blendStaircases(place.numberIn(masks.verticalStaircase), verticalStaircases, x, y);
                restoreNotch(place.numberIn(masks.horizontalNotch), horizontalNotchPixel, x, y);
                restoreNotch(place.numberIn(masks.cornerNotch), cornerNotchPixel, x, y);
                break;
            default:
                treatTip(place, x, y);
                blendJunctions(place.numberIn(masks.junction), x, y);
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
            canvas_.blendStairs(at + variant.source, at + variant.destination, variant.step, ramp,
                                restoring);
        }
    }

    // Restores the pixel of the first pattern that applies.
    void restoreNotch(unsigned found, std::span<const Offset> restored, int x, int y) noexcept {
        if (found == 0) return;
        const Offset at = restored[static_cast<std::size_t>(std::countr_zero(found))];
        canvas_.restorePixel(x + at.dx, y + at.dy, Weights::half);
    }

    // A pixel of column 0 is never restored: the patterns that restore the pixel itself need an
    // edge flag of the column on its left.
    void treatTip(const MaskPlace& place, int x, int y) noexcept {
        if (place.isIn(place.masks.tip)) {
            canvas_.tipAverage(x, y, weights_.tipWeight);
        } else if (place.isIn(place.masks.aboveTip) && x <= map_.width() - 4 && y >= 3) {
            canvas_.restorePixel(x + 1, y - 1, Weights::threeQuarters);
        } else if (place.isIn(place.masks.besideTip)) {
            canvas_.restorePixel(x, y, Weights::threeQuarters);
        }
    }

    void blendJunctions(unsigned found, int x, int y) noexcept {
        for (; found != 0; found &= found - 1) {
            const auto& [from, into] = junctions[static_cast<std::size_t>(std::countr_zero(found))];
            canvas_.blendFrom(x + from.dx, y + from.dy, x + into.dx, y + into.dy, Weights::sixth);
        }
    }

    const Canvas<Depth, mode>& canvas_;
    const EdgeMap& map_;
    const BlendWeights<Weights>& weights_;
    bool vectors_;
    std::array<Way, 4> ways_;  // by side
    KnownRamps<Weights> known_;
    // Of the two sides of a piece, whose ramps are held at once.
    std::array<KeptRamps<Weight>, 2> runs_;
    std::array<KeptRamps<Weight>, 2> thinLines_;
    KeptRamps<Weight> staircases_;
    KeptRamps<Weight> restoring_;
};
