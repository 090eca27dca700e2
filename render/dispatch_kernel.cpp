#include "render/dispatch_kernel.h"

#include <cassert>
#include <cstddef>
#include <optional>

#include "host/suite_handler.h"
#include "kernel/kernels.h"
#include "render/map_world.h"

namespace {

/// The core's pixels are the host's.
template <typename Core, typename Host>
constexpr bool sameLayout = sizeof(Core) == sizeof(Host) &&
                            offsetof(Core, alpha) == offsetof(Host, alpha) &&
                            offsetof(Core, red) == offsetof(Host, red) &&
                            offsetof(Core, green) == offsetof(Host, green) &&
                            offsetof(Core, blue) == offsetof(Host, blue);
static_assert(sameLayout<Pixel8, PF_Pixel> && sameLayout<Pixel16, PF_Pixel16> &&
              sameLayout<PixelFloat, PF_PixelFloat>);

std::optional<PixelDepth> DepthOf(PF_PixelFormat format) {
    switch (format) {
        case PF_PixelFormat_ARGB32:
            return PixelDepth::bits8;
        case PF_PixelFormat_ARGB64:
            return PixelDepth::bits16;
        case PF_PixelFormat_ARGB128:
            return PixelDepth::floats;
        default:
            return std::nullopt;
    }
}

Images ImagesOf(const RenderJob& job) {
    const PF_EffectWorld& input = *job.inputWorld;
    const PF_EffectWorld& output = *job.outputWorld;
    return {input.data, input.rowbytes, output.data, output.rowbytes, output.width, output.height};
}

/// The first copy: the host's own, or with a key the marking one.
PF_Err Copy(const RenderJob& job, PixelDepth depth, SuiteHandler& suites, const Forms& forms) {
    if (job.colorKeyEnable == 0) {
        return suites.get<PF_WorldTransformSuite1>().copy(job.inData->effect_ref, job.inputWorld,
                                                          job.outputWorld, nullptr, nullptr);
    }
    CopyInput(depth, job, ImagesOf(job), forms);
    return PF_Err_NONE;
}

}  // namespace

PF_Err DispatchKernel(const RenderJob& job, const Forms& forms) {
    assert(job.inData != nullptr && job.inputWorld != nullptr && job.outputWorld != nullptr);
    SuiteHandler suites(job.inData->pica_basicP);
    const std::optional<PixelDepth> depth = DepthOf(job.pixelFormat);
    if (!depth) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    const Images images = ImagesOf(job);
    if (job.inputWorld->width != images.width || job.inputWorld->height != images.height)
        return PF_Err_BAD_CALLBACK_PARAM;

    const PF_Err copied = Copy(job, *depth, suites, forms);
    const bool empty = images.width <= 0 || images.height <= 0;
    if (copied != PF_Err_NONE || job.softness == 0 || empty) return copied;

    MapWorld world(suites, job.inData->effect_ref);
    if (const PF_Err err = world.allocate(images.width, images.height); err != PF_Err_NONE)
        return err;
    SmoothCopy(*depth, job, images, world.memory(), forms);
    return PF_Err_NONE;
}
