// The smoothing pass: visits every pixel of the edge map at which a step applies and blends across its edges.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "kernel/pixel_visit.h"
#include "kernel/vector_forms.h"

/// One pass over an image. Its result depends on the visiting order, since later blends act on the output of
/// earlier ones; all decisions are taken on the edge map, which stays as it is.
template <typename Depth, KeyMode mode>
class SmoothingPass {
    using Weights = typename Depth::Weights;

  public:
    SmoothingPass(const Canvas<Depth, mode>& canvas, const EdgeMap& map, const BlendWeights<Weights>& weights)
        : canvas_(canvas), map_(map), weights_(weights) {}

    /// Rows top to bottom, pixels left to right. With vector forms a stretch of a row is decided on at once.
    void run(const VectorForms* forms) const noexcept {
        const bool windows = forms != nullptr && map_.width() >= WindowFlags::pixels;
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
    void runRow(int y) const noexcept {
        const std::uint8_t* flags = map_.row(y);
        for (int group = 0; group < map_.width(); group += 4) {
            std::uint32_t word = 0;
            std::memcpy(&word, flags + group, sizeof word);
            if (word == 0) continue;
            for (int x = group; x < group + 4; ++x) {
                if ((flags[x] & (EdgeRight | EdgeDown)) == 0) continue;
                visit(Patterns(PointFlags(map_, x, y)).find(), 0, x, y);
            }
        }
    }

    void runRowInWindows(const VectorForms& forms, int y) const noexcept {
        for (int x = 0; x < map_.width(); x += WindowFlags::pixels) {
            const int count = std::min(WindowFlags::pixels, map_.width() - x);
            const std::uint64_t pixels = (~std::uint64_t{0} >> (64 - count)) << WindowFlags::margin;
            WindowFlags window;
            window.row(0) = splitRow(forms, x, y);
            if (((window.row(0).plane[0] | window.row(0).plane[1]) & pixels) == 0) continue;
            for (int dy = -WindowFlags::rowsAbove; dy <= WindowFlags::rowsBelow; ++dy) {
                if (dy != 0) window.row(dy) = splitRow(forms, x, y + dy);
            }
            const StepMasks steps = Patterns(window).find();
            for (std::uint64_t left = steps.any().bits & pixels; left != 0; left &= left - 1) {
                const int bit = std::countr_zero(left);
                visit(steps, bit, x - WindowFlags::margin + bit, y);
            }
        }
    }

    // The planes of a window's row, clear outside the image.
    WindowFlags::Row splitRow(const VectorForms& forms, int x, int y) const noexcept {
        if (y < 0 || y >= map_.height()) return {};
        const std::uint8_t* flags = map_.row(y) + x - WindowFlags::margin;
        const std::ptrdiff_t rest = map_.end() - flags;
        if (rest >= WindowFlags::columns) return forms.splitFlags(flags);
        std::uint8_t padded[WindowFlags::columns] = {};
        std::memcpy(padded, flags, static_cast<std::size_t>(rest));
        return forms.splitFlags(padded);
    }

    void visit(const StepMasks& steps, int bit, int x, int y) const noexcept {
        PixelVisit<Depth, mode>(canvas_, map_, weights_, steps, bit, x, y).run();
    }

    Canvas<Depth, mode> canvas_;
    EdgeMap map_;
    BlendWeights<Weights> weights_;
};
