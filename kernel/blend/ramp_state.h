// How a blend ramp falls off from pixel to pixel, and how each kind of ramp starts.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstdint>

#include "kernel/pixels/arithmetic.h"

/// A ramp on its way, in 32-bit integers of 65535 for full weight or in floats of 1 for full
/// weight.
template <typename Weight>
struct RampState {
    bool done;          ///< set by the step that exhausts the ramp
    Weight fullWeight;  ///< the weight at which the ramp starts, and the scale of the bias curve
    Weight remaining;   ///< what is left of it; starts at fullWeight
    Weight step;        ///< what it loses a pixel
    std::int32_t bias;  ///< shape: 0 is straight, positive falls off faster, negative slower
};

/// The bias curve over t from 0 to 1; b from -100 to 100. Maps 0 to 0 and 1 to 1.
[[nodiscard]] inline float BiasCurve(float t, std::int32_t bias) noexcept {
    const auto b = static_cast<float>(bias);
    if (bias > 0) return (t * t * t * b + (100.0F - b) * t) / 100.0F;
    const float u = 1.0F - t;
    return 1.0F - (u * u * u * -b + (100.0F + b) * u) / 100.0F;
}

/// The weight of the next pixel: the area under the falling line over that pixel, the last one's a
/// triangle.
[[nodiscard]] inline std::int32_t RampWeight(RampState<std::int32_t>& ramp) noexcept {
    assert(!ramp.done);
    const std::int64_t before = ramp.remaining;
    ramp.remaining -= ramp.step;
    ramp.done = ramp.remaining <= 0;
    const auto weight = static_cast<std::int32_t>(
        ramp.done ? before * before / (2 * std::int64_t{ramp.step}) : before - (ramp.step >> 1));
    if (ramp.bias == 0) return weight;
    const auto full = static_cast<float>(ramp.fullWeight);
    return TruncateToInt(full * BiasCurve(static_cast<float>(weight) / full, ramp.bias));
}

[[nodiscard]] inline float RampWeight(RampState<float>& ramp) noexcept {
    assert(!ramp.done);
    const float before = ramp.remaining;
    ramp.remaining = before - ramp.step;
    ramp.done = !(ramp.remaining > 0.0F);
    const float weight =
        ramp.done ? before * before / (2.0F * ramp.step) : before + (0.0F - ramp.step * 0.5F);
    if (ramp.bias == 0) return weight;
    return ramp.fullWeight * BiasCurve(weight / ramp.fullWeight, ramp.bias);
}

/// The fixed weights and the ramps' beginnings of one kernel call, all derived from softness and
/// bias.
template <typename Weights>
class BlendWeights {
    using Weight = typename Weights::Weight;

  public:
    using State = RampState<Weight>;

    BlendWeights(std::int32_t softness, std::int32_t bias)
        : tipWeight(Weights::tipWeight(softness)),
          cornerWeight(Weights::cornerWeight(softness)),
          softness_(softness),
          bias_(bias),
          thinBias_(bias / 3) {}

    /// Each neighbour's share in the average of a line tip; the centre's is Weights::one.
    const Weight tipWeight;
    /// For a vertical piece that got no ramp on one side.
    const Weight cornerWeight;

    [[nodiscard]] std::int32_t softness() const { return softness_; }

    /// For a run of n pixels whose length factor is `percent`.
    [[nodiscard]] State runRamp(int n, std::int64_t percent) const {
        assert(n > 0);
        return start(Weights::half, Weights::step(std::max<std::int64_t>(percent, 1) * (n + 1)),
                     bias_);
    }

    /// For a thin line of n pixels.
    [[nodiscard]] State thinLineRamp(int n) const {
        assert(n > 0);
        return start(Weights::one, 2 * Weights::step(atLeastOnePercent() * (n + 1)), thinBias_);
    }

    /// For a staircase of n cells: the main ramp, and the one that restores the pixels beside it.
    [[nodiscard]] State staircaseRamp(int n) const {
        return start(Weights::third, staircaseStep(n), bias_);
    }
    [[nodiscard]] State restoringRamp(int n) const {
        return start(Weights::half, staircaseStep(n), bias_);
    }

  private:
    static State start(Weight full, Weight step, std::int32_t bias) {
        return {false, full, full, step, bias};
    }
    [[nodiscard]] std::int64_t atLeastOnePercent() const { return std::max(softness_, 1); }
    [[nodiscard]] Weight staircaseStep(int n) const {
        assert(n > 0);
        return Weights::step(atLeastOnePercent() * n);
    }

    std::int32_t softness_;
    std::int32_t bias_;
    std::int32_t thinBias_;
};
