// Random choices that come out the same on every platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>

class Dice {
  public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    /// 0 to n - 1.
    int below(int n) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(n)); }
    /// low to high, both included.
    int between(int low, int high) { return low + below(high - low + 1); }
    bool oneIn(int n) { return below(n) == 0; }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(static_cast<int>(choices.size()))];
    }

  private:
    std::mt19937_64 engine_;
};
