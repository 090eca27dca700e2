// The smoothing pass: visits every pixel of the edge map at which a step applies and blends across its edges.
#pragma once

#include <cstdint>
#include <cstring>

#include "kernel/pixel_visit.h"

/// One pass over an image. Its result depends on the visiting order, since later blends act on the output of
/// earlier ones; all decisions are taken on the edge map, which stays as it is.
template <typename Depth, KeyMode mode>
class SmoothingPass {
    using Weights = typename Depth::Weights;

  public:
    SmoothingPass(const Canvas<Depth, mode>& canvas, const EdgeMap& map, const BlendWeights<Weights>& weights)
        : canvas_(canvas), map_(map), weights_(weights) {}

    /// Rows top to bottom, pixels left to right, blank groups of four passed over.
    void run() const noexcept {
        for (int y = 0; y < map_.height(); ++y) {
            const std::uint8_t* flags = map_.row(y);
            for (int group = 0; group < map_.width(); group += 4) {
                std::uint32_t word = 0;
                std::memcpy(&word, flags + group, sizeof word);
                if (word == 0) continue;
                for (int x = group; x < group + 4; ++x) {
                    if ((flags[x] & (EdgeRight | EdgeDown)) == 0) continue;
                    const StepMasks steps = Patterns(PointFlags(map_, x, y)).find();
                    PixelVisit<Depth, mode>(canvas_, map_, weights_, steps, 0, x, y).run();
                }
            }
        }
    }

  private:
    Canvas<Depth, mode> canvas_;
    EdgeMap map_;
    BlendWeights<Weights> weights_;
};
