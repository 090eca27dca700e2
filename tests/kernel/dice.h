// Choices of a test: random ones that come out the same on every platform, or a fuzzer's.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <random>
#include <span>

class Dice {
  public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}
    /// Chooses by the bytes, from the first on; once they are used up, always the first.
    explicit Dice(std::span<const std::uint8_t> bytes) : chosen_(true), bytes_(bytes) {}

    /// 0 to n - 1.
    int below(int n) {
        const auto choices = static_cast<std::uint64_t>(n);
        return static_cast<int>((chosen_ ? take(n <= 256 ? 1 : 4) : engine_()) % choices);
    }
    /// low to high, both included.
    int between(int low, int high) { return low + below(high - low + 1); }
    bool oneIn(int n) { return below(n) == 0; }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(static_cast<int>(choices.size()))];
    }
    int any32Bits() { return static_cast<int>(chosen_ ? take(4) : engine_()); }

  private:
    std::uint64_t take(std::size_t count) {
        std::uint64_t value = 0;
        count = std::min(count, bytes_.size());
        if (count > 0) std::memcpy(&value, bytes_.data(), count);
        bytes_ = bytes_.subspan(count);
        return value;
    }

    std::mt19937_64 engine_;
    bool chosen_ = false;
    std::span<const std::uint8_t> bytes_;
};
