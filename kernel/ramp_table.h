// The ramps of a kernel call, kept: a picture has few different lengths of runs and lines.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "kernel/ramp.h"

/// The first weights of a ramp, and the ramp as they leave it.
template <typename Weight>
struct KeptRamp {
    static constexpr std::size_t longest = 40;

    int count = 0;
    std::array<Weight, longest> weights{};
    RampState<Weight> rest{};
};

/// Works a ramp out at its first use. References last until the next request.
template <typename Weights>
class RampTable {
    using Weight = typename Weights::Weight;
    using Ramp = RampState<Weight>;

  public:
    explicit RampTable(const BlendWeights<Weights>& weights) : weights_(weights) {}

    [[nodiscard]] const KeptRamp<Weight>& run(int n, std::int64_t percent) {
        return find(runs_, {n, percent}, [&] { return weights_.runRamp(n, percent); });
    }
    [[nodiscard]] const KeptRamp<Weight>& thinLine(int n) {
        return find(lines_, {n, 0}, [&] { return weights_.thinLineRamp(n); });
    }

  private:
    struct Key {
        int n = 0;  // 0 marks a free entry
        std::int64_t percent = 0;

        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Entry {
        Key key;
        KeptRamp<Weight> ramp;
    };
    using Table = std::array<Entry, 64>;

    template <typename MakeRamp>
    static const KeptRamp<Weight>& find(Table& table, const Key& key, const MakeRamp& makeRamp) {
        assert(key.n > 0);
        const auto hash = static_cast<std::size_t>(key.percent) * 5 + static_cast<std::size_t>(key.n);
        Entry& entry = table[hash % table.size()];
        if (!(entry.key == key)) {
            entry.key = key;
            fill(entry.ramp, makeRamp());
        }
        return entry.ramp;
    }

    static void fill(KeptRamp<Weight>& kept, const Ramp& ramp) {
        kept.rest = ramp;
        kept.count = 0;
        for (Weight& weight : kept.weights) {
            if (kept.rest.done) break;
            weight = RampWeight(kept.rest);
            ++kept.count;
        }
    }

    const BlendWeights<Weights>& weights_;
    Table runs_;
    Table lines_;
};
