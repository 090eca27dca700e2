// The ramps of a kernel call, kept: a picture has few different lengths of runs and lines.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "kernel/blend/ramp_state.h"
#include "kernel/shapes/findings.h"
#include "kernel/shapes/runs.h"

/// The weights with which a source pixel is blended along a run: the first ones, zeros behind their
/// end, and the state in which they leave the ramp.
template <typename Weight>
struct Ramp {
    static constexpr std::size_t longest = 40;

    int count = 0;
    std::array<Weight, longest> weights{};
    RampState<Weight> rest{true, {}, {}, {}, 0};

    Ramp() = default;
    explicit Ramp(const RampState<Weight>& start) : rest(start) {
        for (; count < int{longest} && !rest.done; ++count)
            weights[static_cast<std::size_t>(count)] = RampWeight(rest);
    }
};

/// The weights of a ramp one after the other.
template <typename Weight>
class RampWalk {
  public:
    explicit RampWalk(const Ramp<Weight>& ramp) : ramp_(ramp), rest_(ramp.rest) {}

    [[nodiscard]] bool done() const { return next_ >= ramp_.count && rest_.done; }
    [[nodiscard]] Weight next() {
        if (next_ < ramp_.count) return ramp_.weights[static_cast<std::size_t>(next_++)];
        return RampWeight(rest_);
    }

  private:
    const Ramp<Weight>& ramp_;
    RampState<Weight> rest_;
    int next_ = 0;
};

/// Keeps measured ramps by two numbers. A ramp lasts until the next request.
template <typename Weight>
class RampCache {
  public:
    /// The ramp kept for n > 0 and percent, which `start` begins at its first use.
    template <typename Start>
    [[nodiscard]] const Ramp<Weight>& find(int n, std::int64_t percent, const Start& start) {
        assert(n > 0);
        const auto hash = static_cast<std::size_t>(percent) * 5 + static_cast<std::size_t>(n);
        Entry& entry = entries_[hash % entries_.size()];
        if (entry.n != n || entry.percent != percent) entry = {n, percent, Ramp<Weight>(start())};
        return entry.ramp;
    }

  private:
    struct Entry {
        int n = 0;  // 0 marks a free entry
        std::int64_t percent = 0;
        Ramp<Weight> ramp;
    };
    std::array<Entry, 64> entries_;
};

/// The ramps that need no measuring: those of every kind but `measured`.
template <typename Weights>
class SettledRamps {
    using Weight = typename Weights::Weight;

  public:
    explicit SettledRamps(const BlendWeights<Weights>& weights) {
        const auto run = [&weights](int n, int m) {
            return Ramp<Weight>(weights.runRamp(n, LengthFactorOf(n, m, weights.softness())));
        };
        at(RampKind::corner).count = 1;
        at(RampKind::corner).weights[0] = weights.cornerWeight;
        at(RampKind::lone1) = run(1, 0);
        at(RampKind::lone2) = run(2, 0);
        at(RampKind::lone3) = run(3, 0);
        at(RampKind::same1) = run(1, 1);
        at(RampKind::same2) = run(2, 2);
    }

    [[nodiscard]] const Ramp<Weight>& of(RampKind kind) const {
        assert(kind != RampKind::measured);
        return ramps_[static_cast<std::size_t>(kind)];
    }

  private:
    [[nodiscard]] Ramp<Weight>& at(RampKind kind) { return ramps_[static_cast<std::size_t>(kind)]; }

    std::array<Ramp<Weight>, static_cast<std::size_t>(RampKind::measured)> ramps_;
};
