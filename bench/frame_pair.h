// A frame as a host lends it to a kernel: an input image and an output image of the same size.
#pragma once

#include "host_kit/command.h"
#include "render/render_job.h"
#include "samples/frames.h"

/// The size of a frame in pixels.
struct Size {
    int width, height;

    [[nodiscard]] double pixels() const { return static_cast<double>(width) * height; }
    friend bool operator==(const Size&, const Size&) = default;
};

/// Both images of a frame at one depth, lent for a render command that lasts as long as the object.
class FramePair {
  public:
    FramePair(const Image8& frame, PF_PixelFormat format);

    /// A job on this frame with the controls at their defaults, the key colour white.
    [[nodiscard]] RenderJob job(bool key, bool keyInvert);

    /// A whole memcpy of one image to the other: the yardstick of all measurements.
    void copyWhole();

  private:
    host_kit::Host host_;
    host_kit::World input_, output_;
    host_kit::Command command_{host_, PF_Cmd_RENDER};
};

/// A frame with its share of edge pixels at the default threshold.
struct MeasuredFrame {
    FrameKind kind;
    Image8 image;
    double edgeShare;
};

/// The frame; kept until another one is asked for, since many benchmarks in a row look at the same.
[[nodiscard]] const MeasuredFrame& KeptFrame(FrameKind kind, Size size);
