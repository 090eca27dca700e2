// The ramps of a kernel call, kept: a picture has few different lengths of runs and lines.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "kernel/ramp.h"
#include "kernel/step_masks.h"

/// The first weights of a ramp, zeros behind its end, and the ramp as they leave it.
template <typename Weight>
struct KeptRamp {
    static constexpr std::size_t longest = 40;

    int count = 0;
    std::array<Weight, longest> weights{};
    RampState<Weight> rest{true, {}, {}, {}, 0};
};

template <typename Weight>
[[nodiscard]] KeptRamp<Weight> Keep(const RampState<Weight>& ramp) {
    KeptRamp<Weight> kept{.rest = ramp};
    for (; kept.count < int{kept.longest} && !kept.rest.done; ++kept.count)
        kept.weights[static_cast<std::size_t>(kept.count)] = RampWeight(kept.rest);
    return kept;
}

/// The weights of a kept ramp one after the other.
template <typename Weight>
class KeptWeights {
  public:
    explicit KeptWeights(const KeptRamp<Weight>& ramp) : ramp_(ramp), rest_(ramp.rest) {}

    [[nodiscard]] bool done() const { return next_ >= ramp_.count && rest_.done; }
    [[nodiscard]] Weight next() {
        if (next_ < ramp_.count) return ramp_.weights[static_cast<std::size_t>(next_++)];
        return RampWeight(rest_);
    }

  private:
    const KeptRamp<Weight>& ramp_;
    RampState<Weight> rest_;
    int next_ = 0;
};

/// Keeps ramps by two numbers. A ramp lasts until the next request.
template <typename Weight>
class KeptRamps {
  public:
    /// The ramp kept for n > 0 and percent, made at its first use.
    template <typename MakeRamp>
    [[nodiscard]] const KeptRamp<Weight>& find(int n, std::int64_t percent, const MakeRamp& makeRamp) {
        assert(n > 0);
        const auto hash = static_cast<std::size_t>(percent) * 5 + static_cast<std::size_t>(n);
        Entry& entry = entries_[hash % entries_.size()];
        if (entry.n != n || entry.percent != percent) entry = {n, percent, Keep(makeRamp())};
        return entry.ramp;
    }

  private:
    struct Entry {
        int n = 0;  // 0 marks a free entry
        std::int64_t percent = 0;
        KeptRamp<Weight> ramp;
    };
    std::array<Entry, 64> entries_;
};

/// The ramps of every kind but `measured`.
template <typename Weights>
class KnownRamps {
    using Ramp = KeptRamp<typename Weights::Weight>;

  public:
    explicit KnownRamps(const BlendWeights<Weights>& weights) {
        const std::int64_t lone = weights.softness();
        const std::int64_t same = lone * 100 / 140;
        at(RampKind::corner).count = 1;
        at(RampKind::corner).weights[0] = weights.cornerWeight;
        at(RampKind::lone1) = Keep(weights.runRamp(1, lone));
        at(RampKind::lone2) = Keep(weights.runRamp(2, lone));
        at(RampKind::lone3) = Keep(weights.runRamp(3, lone));
        at(RampKind::same1) = Keep(weights.runRamp(1, same));
        at(RampKind::same2) = Keep(weights.runRamp(2, same));
    }

    [[nodiscard]] const Ramp& of(RampKind kind) const { return ramps_[static_cast<std::size_t>(kind)]; }

  private:
    [[nodiscard]] Ramp& at(RampKind kind) { return ramps_[static_cast<std::size_t>(kind)]; }

    std::array<Ramp, static_cast<std::size_t>(RampKind::measured)> ramps_;
};

/// The ramps of measured runs and lines.
template <typename Weights>
class MeasuredRamps {
    using Weight = typename Weights::Weight;
    using Ramp = KeptRamp<Weight>;

  public:
    explicit MeasuredRamps(const BlendWeights<Weights>& weights) : weights_(weights) {}

    /// For a run of n pixels whose length factor is `percent`.
    [[nodiscard]] const Ramp& ofRun(int n, std::int64_t percent) {
        return runs_.find(n, percent, [&] { return weights_.runRamp(n, percent); });
    }

    /// For a thin line of n pixels.
    [[nodiscard]] const Ramp& ofThinLine(int n) {
        return lines_.find(n, 0, [&] { return weights_.thinLineRamp(n); });
    }

  private:
    const BlendWeights<Weights>& weights_;
    KeptRamps<Weight> runs_;
    KeptRamps<Weight> lines_;
};

/// The ramps of staircases, by their number of cells.
template <typename Weights>
class StaircaseRamps {
    using Weight = typename Weights::Weight;
    using Ramp = KeptRamp<Weight>;

  public:
    explicit StaircaseRamps(const BlendWeights<Weights>& weights) : weights_(weights) {}

    [[nodiscard]] const Ramp& main(int n) {
        return main_.find(n, 0, [&] { return weights_.staircaseRamp(n); });
    }
    [[nodiscard]] const Ramp& restoring(int n) {
        return restoring_.find(n, 0, [&] { return weights_.restoringRamp(n); });
    }

  private:
    const BlendWeights<Weights>& weights_;
    KeptRamps<Weight> main_;
    KeptRamps<Weight> restoring_;
};
