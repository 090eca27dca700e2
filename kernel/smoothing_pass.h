// The smoothing pass: visits every pixel of the edge map at which a step applies and blends across its edges.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "kernel/edge_flags.h"
#include "kernel/patterns.h"
#include "kernel/pixel_visit.h"
#include "kernel/vector_forms.h"

/// One pass over an image. Its result depends on the visiting order, since later blends act on the output of
/// earlier ones; all decisions are taken on the edge map, which stays as it is.
template <typename Depth, KeyMode mode>
class SmoothingPass {
    using Weights = typename Depth::Weights;

  public:
    SmoothingPass(const Canvas<Depth, mode>& canvas, const EdgeMap& map, const BlendWeights<Weights>& weights)
        : canvas_(canvas), map_(map), weights_(weights), ramps_(weights) {
        assert(map.width() == canvas.width() && map.height() == canvas.height());
    }

    /// Rows top to bottom, pixels left to right. With vector forms stretches of a row are decided on at once.
    void run(const VectorForms* forms) noexcept {
        const bool windows = forms != nullptr && map_.width() >= StepWindows::pixels;
        for (int y = 0; y < map_.height(); ++y) {
            if (windows) {
                runRowInWindows(*forms, y);
            } else {
                runRow(y);
            }
        }
    }

  private:
    // Blank groups of four are passed over.
    void runRow(int y) noexcept {
        StepMasks steps;
        const std::uint8_t* flags = map_.row(y);
        for (int group = 0; group < map_.width(); group += 4) {
            std::uint32_t word = 0;
            std::memcpy(&word, flags + group, sizeof word);
            if (word == 0) continue;
            for (int x = group; x < group + 4; ++x) {
                if ((flags[x] & (EdgeRight | EdgeDown)) == 0) continue;
                Patterns(PointFlags(map_, x, y)).find(steps, 0);
                visit(steps, 0, 0, x, y);
            }
        }
    }

    void runRowInWindows(const VectorForms& forms, int y) noexcept {
        const MapRow row{map_.row(y) - EdgeMap::leftMargin,
                         map_.stride(),
                         map_.end(),
                         y,
                         map_.height() - 1 - y,
                         map_.width()};
        StepWindows windows;
        for (int next = 0; next < map_.width();) {
            next = forms.findSteps(row, next, windows);
            for (int w = 0; w < windows.count; ++w) {
                const int x = windows.x[w];
                const int count = std::min(StepWindows::pixels, map_.width() - x);
                const std::uint64_t inside = (~std::uint64_t{0} >> (64 - count)) << StepWindows::margin;
                for (std::uint64_t left = windows.steps.any.word[w] & inside; left != 0; left &= left - 1) {
                    const int bit = std::countr_zero(left);
                    visit(windows.steps, w, bit, x - StepWindows::margin + bit, y);
                }
            }
        }
    }

    void visit(const StepMasks& steps, int window, int bit, int x, int y) noexcept {
        // Lines go on downwards, across memory that nothing else reads ahead.
        constexpr int rowsAhead = 3;
        canvas_.prefetch(x, std::min(y + rowsAhead, map_.height() - 1));
        PixelVisit<Depth, mode>(canvas_, map_, weights_, ramps_, steps, window, bit, x, y).run();
    }

    Canvas<Depth, mode> canvas_;
    EdgeMap map_;
    const BlendWeights<Weights>& weights_;
    RampTable<Weights> ramps_;
};
