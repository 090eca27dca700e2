// The smoothing pass: goes through the edge map and takes every step that applies, blending across
// its edges.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "kernel/edge_flags.h"
#include "kernel/patterns.h"
#include "kernel/pixel_steps.h"
#include "kernel/step_list.h"
#include "kernel/vector_forms.h"

/// One pass over an image. Its result depends on the visiting order, since later blends act on the
/// output of earlier ones; all decisions are taken on the edge map, which stays as it is.
template <typename Depth, KeyMode mode>
class SmoothingPass {
    using Weights = typename Depth::Weights;

  public:
    /// With vector forms stretches of rows are decided on at once.
    SmoothingPass(const Canvas<Depth, mode>& canvas, const EdgeMap& map,
                  const BlendWeights<Weights>& weights, const VectorForms* forms)
        : canvas_(canvas),
          map_(map),
          forms_(forms != nullptr && map.width() >= StepWindows::pixels ? forms : nullptr),
          steps_(canvas_, map_, weights, forms_ != nullptr) {
        assert(map.width() == canvas.width() && map.height() == canvas.height());
    }

    /// Rows top to bottom, pixels left to right.
    void run() noexcept {
        if (forms_ != nullptr) {
            runInWindows();
        } else {
            for (int y = 0; y < map_.height(); ++y) runRow(y);
        }
    }

  private:
    // Blank groups of four are passed over.
    void runRow(int y) noexcept {
        StepMasks masks;
        const std::uint8_t* flags = map_.row(y);
        for (int group = 0; group < map_.width(); group += 4) {
            std::uint32_t word = 0;
            std::memcpy(&word, flags + group, sizeof word);
            if (word == 0) continue;
            for (int x = group; x < group + 4; ++x) {
                if ((flags[x] & (EdgeRight | EdgeDown)) == 0) continue;
                Patterns(PointFlags(map_, x, y)).find(masks, 0);
                for (int step = 0; step < stepCount; ++step) {
                    if (masks.step[step].test(0, 0))
                        steps_.take(static_cast<Step>(step), {masks, 0, 0}, x, y);
                }
            }
        }
    }

    void runInWindows() noexcept {
        const MapBytes bytes{map_.row(0) - EdgeMap::leftMargin, map_.stride(), map_.end(),
                             map_.width(), map_.height()};
        StepWindows windows;
        StepList list;
        for (int x = 0, y = 0; y < map_.height();) {
            forms_->findSteps(bytes, x, y, windows);
            list.list(windows, map_.width());
            if (list.size() < mostScattered) prefetch(windows, list);
            for (int i = 0; i < list.size(); ++i) takeStep(windows, list, i);
        }
    }

    // Longer lists are of pixels so close together that they come into the cache by themselves.
    static constexpr int mostScattered = 300;

    void prefetch(const StepWindows& windows, const StepList& list) const noexcept {
        for (int i = 0; i < list.size(); ++i) {
            const int window = list.window(i);
            canvas_.prefetch(windows.column(window, list.bit(i)), windows.y[window]);
        }
    }

    void takeStep(const StepWindows& windows, const StepList& list, int i) noexcept {
        const int window = list.window(i);
        const int bit = list.bit(i);
        const int x = windows.column(window, bit);
        const int y = windows.y[window];
        // Lines go on downwards, across memory that nothing else reads ahead.
        constexpr int rowsAhead = 3;
        if (list.step(i) != Step::finish)
            canvas_.prefetch(x, std::min(y + rowsAhead, map_.height() - 1));
        steps_.take(list.step(i), {windows.steps, window, bit}, x, y);
    }

    Canvas<Depth, mode> canvas_;
    EdgeMap map_;
    const VectorForms* forms_;
    PixelSteps<Depth, mode> steps_;
};
