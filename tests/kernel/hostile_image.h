// Images as the most difficult host lends them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "tests/kernel/dice.h"

/// How an image lies in memory. The default is tight: the block ends with the last pixel of the
/// last row, where the heap's own checks begin.
struct Layout {
    int padding = 0;        ///< bytes between rows
    int misalignment = 0;   ///< bytes past an aligned address at which the pixels start
    bool bottomUp = false;  ///< the top row lies last
    bool guarded = false;   ///< between bands of noise
};

/// Any pitch and start that keep channels of so many bytes aligned.
inline Layout RandomLayout(int channel, Dice& dice) {
    return {.padding = dice.oneIn(3) ? 0 : channel * dice.between(1, 40),
            .misalignment = channel * dice.below(4),
            .bottomUp = dice.oneIn(4),
            .guarded = dice.oneIn(4)};
}

/// Filled with noise.
template <typename P>
class HostileImage {
  public:
    HostileImage(int width, int height, const Layout& layout = {})
        : height_(height),
          rowSize_(static_cast<std::size_t>(width) * sizeof(P)),
          stride_(rowSize_ + static_cast<std::size_t>(layout.padding)),
          band_(layout.guarded ? 64 : 0),
          first_(band_ + static_cast<std::size_t>(layout.misalignment)),
          bottomUp_(layout.bottomUp),
          block_(first_ + stride_ * static_cast<std::size_t>(height - 1) + rowSize_ + band_) {
        for (std::size_t i = 0; i < block_.size(); ++i) block_[i] = noise(i);
    }

    [[nodiscard]] std::ptrdiff_t pitch() const {
        const auto stride = static_cast<std::ptrdiff_t>(stride_);
        return bottomUp_ ? -stride : stride;
    }
    [[nodiscard]] P* row(int y) {
        const auto fromStart = static_cast<std::size_t>(bottomUp_ ? height_ - 1 - y : y);
        return reinterpret_cast<P*>(block_.data() + first_ + fromStart * stride_);
    }

    /// Takes over pixels that lie tight, from the top row on.
    void load(const P* tight) {
        for (int y = 0; y < height_; ++y) std::memcpy(row(y), tight + index(y), rowSize_);
    }
    void store(P* tight) {
        for (int y = 0; y < height_; ++y) std::memcpy(tight + index(y), row(y), rowSize_);
    }
    /// Whether it has these pixels.
    [[nodiscard]] bool holds(const P* tight) {
        bool same = true;
        for (int y = 0; y < height_; ++y)
            same = same && std::memcmp(row(y), tight + index(y), rowSize_) == 0;
        return same;
    }

    /// Whether nothing but pixels was written.
    [[nodiscard]] bool surroundingsIntact() const {
        for (std::size_t i = 0; i < block_.size(); ++i) {
            const bool pixel =
                i >= first_ && i < block_.size() - band_ && (i - first_) % stride_ < rowSize_;
            if (!pixel && block_[i] != noise(i)) return false;
        }
        return true;
    }

  private:
    static std::byte noise(std::size_t i) { return static_cast<std::byte>(i * 2654435761U >> 13); }
    /// Of a row's first pixel where pixels lie tight.
    [[nodiscard]] std::size_t index(int y) const {
        return static_cast<std::size_t>(y) * (rowSize_ / sizeof(P));
    }

    int height_;
    std::size_t rowSize_, stride_, band_, first_;
    bool bottomUp_;
    std::vector<std::byte> block_;
};
