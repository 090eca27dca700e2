// The ramps of a kernel call, kept: a picture has few different lengths of runs and lines.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "kernel/ramp.h"
#include "kernel/run_measures.h"
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
    [[nodiscard]] const KeptRamp<Weight>& find(int n, std::int64_t percent,
                                               const MakeRamp& makeRamp) {
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
        const auto run = [&weights](int n, int m) {
            return Keep(weights.runRamp(n, LengthFactorOf(n, m, weights.softness())));
        };
        at(RampKind::corner).count = 1;
        at(RampKind::corner).weights[0] = weights.cornerWeight;
        at(RampKind::lone1) = run(1, 0);
        at(RampKind::lone2) = run(2, 0);
        at(RampKind::lone3) = run(3, 0);
        at(RampKind::same1) = run(1, 1);
        at(RampKind::same2) = run(2, 2);
    }

    [[nodiscard]] const Ramp& of(RampKind kind) const {
        return ramps_[static_cast<std::size_t>(kind)];
    }

  private:
    [[nodiscard]] Ramp& at(RampKind kind) { return ramps_[static_cast<std::size_t>(kind)]; }

    std::array<Ramp, static_cast<std::size_t>(RampKind::measured)> ramps_;
};
