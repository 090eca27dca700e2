// Images as the most difficult host lends them.
#pragma once

#include <cstddef>
#include <cstdint>
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
        : height_(static_cast<std::size_t>(height)),
          rowSize_(static_cast<std::size_t>(width) * sizeof(P)),
          stride_(rowSize_ + static_cast<std::size_t>(layout.padding)),
          band_(layout.guarded ? 64 : 0),
          first_(band_ + static_cast<std::size_t>(layout.misalignment)),
          bottomUp_(layout.bottomUp),
          block_(first_ + stride_ * (height_ - 1) + rowSize_ + band_) {
        for (std::size_t i = 0; i < block_.size(); ++i) block_[i] = noise(i);
    }

    [[nodiscard]] std::ptrdiff_t pitch() const {
        return bottomUp_ ? -static_cast<std::ptrdiff_t>(stride_)
                         : static_cast<std::ptrdiff_t>(stride_);
    }
    [[nodiscard]] P* row(int y) {
        const auto fromTop = static_cast<std::size_t>(y);
        const std::size_t fromStart = bottomUp_ ? height_ - 1 - fromTop : fromTop;
        return reinterpret_cast<P*>(block_.data() + first_ + fromStart * stride_);
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

    std::size_t height_, rowSize_, stride_, band_, first_;
    bool bottomUp_;
    std::vector<std::byte> block_;
};
