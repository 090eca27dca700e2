// A frame as a host lends it to a kernel: an input image and an output image of the same size.
#pragma once

#include <cstddef>
#include <cstring>
#include <vector>

#include "bench/bench_host.h"
#include "samples/frames.h"

/// The size of a frame in pixels.
struct Size {
    int width, height;

    [[nodiscard]] double pixels() const { return static_cast<double>(width) * height; }
    friend bool operator==(const Size&, const Size&) = default;
};

/// Both images of a frame at one depth, and a whole memcpy of one to the other as the yardstick.
class FramePair {
  public:
    FramePair(const Image8& frame, PF_PixelFormat format);

    [[nodiscard]] Size size() const { return {input_.width, input_.height}; }
    [[nodiscard]] PF_EffectWorld& input() { return input_; }
    [[nodiscard]] PF_EffectWorld& output() { return output_; }

    /// A job on this frame with the controls at their defaults, the key colour white.
    [[nodiscard]] RenderJob job(BenchHost& host, bool key, bool keyInvert);

    /// The yardstick of all measurements.
    void copyWhole() { std::memcpy(outputBytes_.data(), inputBytes_.data(), inputBytes_.size()); }

  private:
    PF_PixelFormat format_;
    std::vector<std::byte> inputBytes_;
    std::vector<std::byte> outputBytes_;
    PF_EffectWorld input_{};
    PF_EffectWorld output_{};
};

/// A frame with its share of edge pixels at the default threshold.
struct MeasuredFrame {
    FrameKind kind;
    Image8 image;
    double edgeShare;
};

/// The frame; kept until another one is asked for, since many benchmarks in a row look at the same.
[[nodiscard]] const MeasuredFrame& KeptFrame(FrameKind kind, Size size);
