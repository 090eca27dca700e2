#include "bench/frame_pair.h"

#include <cstring>
#include <optional>
#include <utility>

namespace {

constexpr EffectValues defaults{.colorThreshold = 10,
                                .softness = 70,
                                .bias = 0,
                                .colorKeyEnable = 0,
                                .keyRed = 255,
                                .keyGreen = 255,
                                .keyBlue = 255,
                                .keyThreshold = 0,
                                .keyInvert = 0};

/// Images start where those of a plain allocation do, which is not at a cache line.
constexpr A_long pastCacheLine = 16;

template <typename Pixel>
void Fill(host_kit::World& world, const Image<Pixel>& image) {
    std::memcpy(world.row<Pixel>(0), image.pixels.data(), image.pixels.size() * sizeof(Pixel));
}

}  // namespace

FramePair::FramePair(const Image8& frame, PF_PixelFormat format)
    : input_(format, frame.width, frame.height, {.misalignment = pastCacheLine}),
      output_(format, frame.width, frame.height, {.misalignment = pastCacheLine}) {
    // From a pool, so that the system need not map fresh pages for every call.
    host_.scratchMemory = {.misalignment = pastCacheLine, .pooled = true};
    command_.lendImages(input_, &output_);
    if (format == PF_PixelFormat_ARGB32) Fill(input_, frame);
    if (format == PF_PixelFormat_ARGB64) Fill(input_, ToDepth16(frame));
    if (format == PF_PixelFormat_ARGB128) Fill(input_, ToDepthFloat(frame));
}

RenderJob FramePair::job(bool key, bool keyInvert) {
    RenderJob job{defaults, &command_.inData, input_.format(), &input_.record(), &output_.record()};
    job.colorKeyEnable = key ? 1 : 0;
    job.keyInvert = keyInvert ? 1 : 0;
    return job;
}

void FramePair::copyWhole() {
    std::memcpy(output_.row<char>(0), input_.row<char>(0),
                static_cast<std::size_t>(input_.record().rowbytes) *
                    static_cast<std::size_t>(input_.height()));
}

const MeasuredFrame& KeptFrame(FrameKind kind, Size size) {
    static std::optional<MeasuredFrame> kept;
    if (!kept || kept->kind != kind || Size{kept->image.width, kept->image.height} != size) {
        kept.reset();
        Image8 image = MakeFrame(kind, size.width, size.height);
        const double share = EdgeShare(image, defaults.colorThreshold);
        kept = MeasuredFrame{kind, std::move(image), share};
    }
    return *kept;
}
