#include "kernel/dispatch_kernel.h"

#include <array>
#include <cassert>

#include "host/suite_handler.h"
#include "kernel/kernels.h"

namespace {

using Kernel = PF_Err (*)(const RenderJob& job, const VectorForms* forms);

struct DepthKernels {
    PF_PixelFormat pixelFormat;
    Kernel noKey;
    Kernel key;
    Kernel keyInvert;
};

constexpr std::array<DepthKernels, 3> kernelTable{{
    {PF_PixelFormat_ARGB32, Kernel8, Kernel8Key, Kernel8KeyInvert},
    {PF_PixelFormat_ARGB64, Kernel16, Kernel16Key, Kernel16KeyInvert},
    {PF_PixelFormat_ARGB128, KernelFloat, KernelFloatKey, KernelFloatKeyInvert},
}};

}  // namespace

PF_Err DispatchKernel(const RenderJob& job) { return DispatchKernel(job, BestInstructionSet()); }

PF_Err DispatchKernel(const RenderJob& job, InstructionSet instructionSet) {
    assert(job.inData != nullptr && job.inputWorld != nullptr && job.outputWorld != nullptr);
    const VectorForms* forms = FormsFor(instructionSet);
    const SuiteHandler suites(job.inData->pica_basicP);
    for (const DepthKernels& depth : kernelTable) {
        if (depth.pixelFormat != job.pixelFormat) continue;
        if (job.colorKeyEnable == 0) return depth.noKey(job, forms);
        return job.keyInvert == 0 ? depth.key(job, forms) : depth.keyInvert(job, forms);
    }
    return PF_Err_UNRECOGNIZED_PARAM_TYPE;
}
