#include "bench/frame_pair.h"

#include <cassert>
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

template <typename Pixel>
std::vector<std::byte> Bytes(const Image<Pixel>& image) {
    const auto* first = reinterpret_cast<const std::byte*>(image.pixels.data());
    return {first, first + image.pixels.size() * sizeof(Pixel)};
}

std::vector<std::byte> BytesAtDepth(const Image8& frame, PF_PixelFormat format) {
    if (format == PF_PixelFormat_ARGB64) return Bytes(ToDepth16(frame));
    if (format == PF_PixelFormat_ARGB128) return Bytes(ToDepthFloat(frame));
    assert(format == PF_PixelFormat_ARGB32);
    return Bytes(frame);
}

PF_EffectWorld WorldOver(std::vector<std::byte>& bytes, int width, int height) {
    PF_EffectWorld world{};
    world.data = bytes.data();
    world.rowbytes = static_cast<A_long>(bytes.size() / static_cast<std::size_t>(height));
    world.width = width;
    world.height = height;
    return world;
}

}  // namespace

FramePair::FramePair(const Image8& frame, PF_PixelFormat format)
    : format_(format),
      inputBytes_(BytesAtDepth(frame, format)),
      outputBytes_(inputBytes_.size()),
      input_(WorldOver(inputBytes_, frame.width, frame.height)),
      output_(WorldOver(outputBytes_, frame.width, frame.height)) {}

RenderJob FramePair::job(BenchHost& host, bool key, bool keyInvert) {
    RenderJob job{defaults, host.inData(), format_, &input_, &output_};
    job.colorKeyEnable = key ? 1 : 0;
    job.keyInvert = keyInvert ? 1 : 0;
    return job;
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
