#include "kernel/kernels.h"

#include "kernel/depth16.h"
#include "kernel/depth8.h"
#include "kernel/depth_float.h"
#include "kernel/edge_scan.h"
#include "kernel/map_world.h"
#include "kernel/smoothing_pass.h"

namespace {

// The first copy: the host's own, or with a key the marking one.
template <typename Depth, KeyMode mode>
PF_Err CopyInput(const RenderJob& job, SuiteHandler& suites, const ColorKey<Depth, mode>& key,
                 const VectorForms* forms) {
    using Pixel = typename Depth::Pixel;
    if constexpr (mode == KeyMode::NoKey) {
        return suites.get<PF_WorldTransformSuite1>().copy(job.inData->effect_ref, job.inputWorld,
                                                          job.outputWorld, nullptr, nullptr);
    } else {
        MarkingCopy(key, ImageView<const Pixel>(*job.inputWorld),
                    ImageView<Pixel>(*job.outputWorld), forms);
        return PF_Err_NONE;
    }
}

template <typename Depth, KeyMode mode>
PF_Err RunKernel(const RenderJob& job, const VectorForms* forms) {
    using Pixel = typename Depth::Pixel;
    SuiteHandler suites(job.inData->pica_basicP);
    const ImageView<const Pixel> input(*job.inputWorld);
    const ImageView<Pixel> output(*job.outputWorld);
    if (input.width() != output.width() || input.height() != output.height())
        return PF_Err_BAD_CALLBACK_PARAM;

    const Depth depth(job);
    const ColorKey<Depth, mode> key(job);
    const BlendWeights<typename Depth::Weights> weights(job.softness, job.bias);
    const PF_Err copied = CopyInput(job, suites, key, forms);
    if (copied != PF_Err_NONE || job.softness == 0 || input.isEmpty()) return copied;

    MapWorld world(suites, job.inData->effect_ref);
    if (const PF_Err err = world.allocate(input.width(), input.height()); err != PF_Err_NONE)
        return err;
    const EdgeMap map(world.memory(), input.width(), input.height());
    ScanEdges(depth, ImageView<const Pixel>(*job.outputWorld), map, forms);
    SmoothingPass<Depth, mode>(Canvas<Depth, mode>(input, output, key), map, weights, forms).run();
    return PF_Err_NONE;
}

}  // namespace

PF_Err Kernel8(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<Depth8, KeyMode::NoKey>(job, forms);
}
PF_Err Kernel8Key(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<Depth8, KeyMode::Key>(job, forms);
}
PF_Err Kernel8KeyInvert(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<Depth8, KeyMode::KeyInvert>(job, forms);
}
PF_Err Kernel16(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<Depth16, KeyMode::NoKey>(job, forms);
}
PF_Err Kernel16Key(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<Depth16, KeyMode::Key>(job, forms);
}
PF_Err Kernel16KeyInvert(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<Depth16, KeyMode::KeyInvert>(job, forms);
}
PF_Err KernelFloat(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<DepthFloat, KeyMode::NoKey>(job, forms);
}
PF_Err KernelFloatKey(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<DepthFloat, KeyMode::Key>(job, forms);
}
PF_Err KernelFloatKeyInvert(const RenderJob& job, const VectorForms* forms) {
    return RunKernel<DepthFloat, KeyMode::KeyInvert>(job, forms);
}
