// The smoothing pass: goes through the edge map and takes every step that applies, blending across
// its edges.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>

#include "kernel/blend/image_pair.h"
#include "kernel/blend/ramp_state.h"
#include "kernel/edges/edge_map.h"
#include "kernel/pass/step_list.h"
#include "kernel/pass/steps.h"
#include "kernel/pass/windows.h"

/// One pass over an image, rows top to bottom, pixels left to right. Its result depends on that
/// order, since later blends act on the output of earlier ones; all decisions are taken on the edge
/// map, which stays as it is.
template <typename Depth, KeyMode mode>
class SmoothingPass {
    using Weights = typename Depth::Weights;

  public:
    /// `blendAcross` may be null; `watch` is handed to `findWindows`.
    SmoothingPass(const ImagePair<Depth, mode>& images, const EdgeMap& map,
                  const BlendWeights<Weights>& weights, FindWindows* findWindows,
                  BlendAcross<typename Depth::Pixel, typename Weights::Weight>* blendAcross,
                  WatchedSearch* watch = nullptr)
        : images_(images),
          map_(map),
          findWindows_(findWindows),
          watch_(watch),
          steps_(images_, map_, weights, blendAcross) {
        assert(map.width() == images.width() && map.height() == images.height());
    }

    void run() noexcept {
        const SearchedMap searched{map_, watch_};
        Windows windows;
        StepList list;
        for (int x = 0, y = 0; y < map_.height();) {
            findWindows_(searched, x, y, windows);
            if (haveOnlyTips(windows)) {
                averageTips(windows);
                continue;
            }
            list.list(windows, map_.width());
            if (list.size() < mostScattered) prefetch(windows, list);
            for (int i = 0; i < list.size(); ++i) takeStep(windows, list, i);
        }
    }

  private:
    // In noise nearly every pixel is a tip and nothing else, which a list would only delay.
    [[nodiscard]] bool haveOnlyTips(const Windows& windows) const noexcept {
        std::uint64_t others = 0;
        for (int window = 0; window < windows.count; ++window)
            others |= windows.found.besidesTips.word[window] & windows.own(window, map_.width());
        return others == 0;
    }
    void averageTips(const Windows& windows) noexcept {
        for (int window = 0; window < windows.count; ++window) {
            steps_.averageTips(windows.found.tip.word[window] & windows.own(window, map_.width()),
                               windows.x[window] - Windows::margin, windows.y[window]);
        }
    }

    // Longer lists are of pixels so close together that they come into the cache by themselves.
    static constexpr int mostScattered = 300;

    void prefetch(const Windows& windows, const StepList& list) const noexcept {
        for (int i = 0; i < list.size(); ++i) {
            const int window = list.window(i);
            images_.prefetch(windows.column(window, list.bit(i)), windows.y[window]);
        }
    }

    void takeStep(const Windows& windows, const StepList& list, int i) noexcept {
        const int window = list.window(i);
        const int bit = list.bit(i);
        const int x = windows.column(window, bit);
        const int y = windows.y[window];
        // Lines go on downwards, across memory that nothing else reads ahead.
        constexpr int rowsAhead = 3;
        if (list.step(i) != Step::finish)
            images_.prefetch(x, std::min(y + rowsAhead, map_.height() - 1));
        steps_.take(list.step(i), {windows.found, window, bit}, x, y);
    }

    ImagePair<Depth, mode> images_;
    EdgeMap map_;
    FindWindows* findWindows_;
    WatchedSearch* watch_;
    PixelSteps<Depth, mode> steps_;
};
