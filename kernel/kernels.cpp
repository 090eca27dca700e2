#include "kernel/kernels.h"

#include <algorithm>
#include <cassert>

#include "kernel/edges/edge_scan.h"
#include "kernel/pass/smoothing_pass.h"
#include "kernel/pass/watched_search.h"
#include "kernel/pixels/depth16.h"
#include "kernel/pixels/depth8.h"
#include "kernel/pixels/depth_float.h"

namespace {

template <typename Pixel>
ImageView<const Pixel> InputOf(const Images& images) {
    return {images.input, images.inputPitch, images.width, images.height};
}
template <typename Pixel>
ImageView<Pixel> OutputOf(const Images& images) {
    return {images.output, images.outputPitch, images.width, images.height};
}

template <typename Depth, KeyMode mode>
void Copy(const EffectValues& values, const Images& images, const Forms& forms) {
    using Pixel = typename Depth::Pixel;
    const auto input = InputOf<Pixel>(images);
    const auto output = OutputOf<Pixel>(images);
    if constexpr (mode == KeyMode::NoKey) {
        for (int y = 0; y < input.height(); ++y)
            std::copy_n(input.row(y), input.width(), output.row(y));
    } else {
        MarkingCopy(ColorKey<Depth, mode>(values), input, output, forms.of<Pixel>().markPixels);
    }
}

template <typename Depth>
EdgeMap ScanOutput(const EffectValues& values, const Images& images, std::uint8_t* scratch,
                   const Forms& forms) {
    using Pixel = typename Depth::Pixel;
    const EdgeMap map(scratch, images.width, images.height);
    const ImageView<const Pixel> copy(images.output, images.outputPitch, images.width,
                                      images.height);
    ScanEdges(Depth(values), copy, map, forms.of<Pixel>().scanRow);
    return map;
}

template <typename Depth, KeyMode mode>
bool Smooth(const EffectValues& values, const Images& images, std::uint8_t* scratch,
            const Forms& forms, const Progress& progress) {
    using Pixel = typename Depth::Pixel;
    const EdgeMap map = ScanOutput<Depth>(values, images, scratch, forms);
    const ImagePair<Depth, mode> pair(InputOf<Pixel>(images), OutputOf<Pixel>(images),
                                      ColorKey<Depth, mode>(values), forms.of<Pixel>().markPixels);
    const BlendWeights<typename Depth::Weights> weights(values.softness, values.bias);
    WatchedSearch search{progress, forms.findWindows};
    SmoothingPass<Depth, mode>(pair, map, weights, search.asked(), forms.of<Pixel>().blendAcross,
                               &search)
        .run();
    return !search.ended;
}

struct Kernel {
    void (*copy)(const EffectValues& values, const Images& images, const Forms& forms);
    bool (*smooth)(const EffectValues& values, const Images& images, std::uint8_t* scratch,
                   const Forms& forms, const Progress& progress);
};

template <typename Depth, KeyMode mode>
constexpr Kernel kernel{Copy<Depth, mode>, Smooth<Depth, mode>};

// By depth and key mode.
constexpr Kernel kernels[3][3] = {
    {kernel<Depth8, KeyMode::NoKey>, kernel<Depth8, KeyMode::Key>,
     kernel<Depth8, KeyMode::KeyInvert>},
    {kernel<Depth16, KeyMode::NoKey>, kernel<Depth16, KeyMode::Key>,
     kernel<Depth16, KeyMode::KeyInvert>},
    {kernel<DepthFloat, KeyMode::NoKey>, kernel<DepthFloat, KeyMode::Key>,
     kernel<DepthFloat, KeyMode::KeyInvert>},
};

const Kernel& KernelFor(PixelDepth depth, const EffectValues& values) {
    return kernels[static_cast<int>(depth)][static_cast<int>(KeyModeOf(values))];
}

bool IsEmpty(const Images& images) { return images.width <= 0 || images.height <= 0; }

}  // namespace

std::size_t ScratchBytes(int width, int height) noexcept {
    return EdgeMap::byteCount(width, height);
}

void CopyInput(PixelDepth depth, const EffectValues& values, const Images& images,
               const Forms& forms) noexcept {
    if (IsEmpty(images)) return;
    assert(images.input != nullptr && images.output != nullptr);
    KernelFor(depth, values).copy(values, images, forms);
}

bool SmoothCopy(PixelDepth depth, const EffectValues& values, const Images& images,
                std::uint8_t* scratch, const Forms& forms, const Progress& progress) noexcept {
    if (values.softness == 0 || IsEmpty(images)) return true;
    assert(images.input != nullptr && images.output != nullptr && scratch != nullptr);
    return KernelFor(depth, values).smooth(values, images, scratch, forms, progress);
}

EdgeMap FindEdges(PixelDepth depth, const EffectValues& values, const Images& images,
                  std::uint8_t* scratch, const Forms& forms) noexcept {
    assert(!IsEmpty(images) && images.output != nullptr && scratch != nullptr);
    switch (depth) {
        case PixelDepth::bits8:
            return ScanOutput<Depth8>(values, images, scratch, forms);
        case PixelDepth::bits16:
            return ScanOutput<Depth16>(values, images, scratch, forms);
        default:
            return ScanOutput<DepthFloat>(values, images, scratch, forms);
    }
}
