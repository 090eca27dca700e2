// The steps of windows as a list, in the order in which they are taken.
#pragma once

#include <bit>
#include <cassert>
#include <cstdint>

#include "kernel/pass/windows.h"
#include "kernel/shapes/findings.h"

/// Lists without branches that depend on the steps: no processor can foresee where they apply.
class StepList {
  public:
    /// Lists the steps of all windows, pixel by pixel. The windows are of an image of this width.
    void list(const Windows& windows, int width) noexcept {
        const int pixels = listPixels(windows, width);
        int size = 0;
        for (int i = 0; i < pixels; ++i) {
            const int window = pixels_[i] >> bitBits;
            const int bit = pixels_[i] & (Windows::columns - 1);
            for (int step = 0; step < stepCount; ++step) {
                entries_[size] = static_cast<std::uint16_t>(pixels_[i] << stepBits | step);
                size += windows.found.step[step].has(window, bit) ? 1 : 0;
            }
        }
        size_ = size;
    }

    [[nodiscard]] int size() const { return size_; }
    [[nodiscard]] Step step(int i) const {
        return static_cast<Step>(entries_[i] & ((1 << stepBits) - 1));
    }
    [[nodiscard]] int window(int i) const { return entries_[i] >> (stepBits + bitBits); }
    [[nodiscard]] int bit(int i) const { return entries_[i] >> stepBits & (Windows::columns - 1); }

  private:
    // An entry holds its window, its bit there and its step, from the highest bits to the lowest.
    static constexpr int stepBits = 3;
    static constexpr int bitBits = 6;
    static_assert(stepCount <= 1 << stepBits && Windows::columns == 1 << bitBits);

    static constexpr int mostPixels = PixelSet::windows * Windows::pixels;
    static constexpr int atOnce = 4;

    // Lists the pixels at which any step applies and counts them. They are written four at a time,
    // counted or not.
    int listPixels(const Windows& windows, int width) noexcept {
        int size = 0;
        for (int window = 0; window < windows.count; ++window) {
            std::uint64_t left = windows.found.any.word[window] & windows.own(window, width);
            do {
                for (int i = 0; i < atOnce; ++i, left &= left - 1) {
                    constexpr std::uint64_t last = std::uint64_t{1}
                                                   << 63;  // so that there always is one
                    pixels_[size] = static_cast<std::uint16_t>(window << bitBits |
                                                               std::countr_zero(left | last));
                    size += left != 0 ? 1 : 0;
                }
            } while (left != 0);
        }
        return size;
    }

    int size_ = 0;
    std::uint16_t pixels_[mostPixels + atOnce]{};
    std::uint16_t entries_[mostPixels * stepCount + 1]{};
};
