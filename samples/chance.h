// Pseudo-random numbers that are the same everywhere.
#pragma once

#include <cstdint>

class Chance {
  public:
    explicit Chance(unsigned seed) : state_(seed * 2654435761U + 1) {}

    /// A whole number 0 .. `sides` - 1; up to 2^24 sides.
    int roll(int sides) {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<int>((state_ >> 8) % static_cast<unsigned>(sides));
    }

  private:
    std::uint32_t state_;
};
