// Each of the nine kernels as a host calls it, on every frame.
#include "bench/benchmarks.h"
#include "bench/kernel_timing.h"

namespace {

void MeasureKernel(benchmark::State& state, const NamedKernel& kernel, FrameKind kind, Size size,
                   const Effort& effort) {
    const MeasuredFrame& frame = KeptFrame(kind, size);
    FramePair pair(frame.image, kernel.format);
    const RenderJob job = pair.job(kernel.key, kernel.keyInvert);
    const double seconds = TimeKernel(state, pair, job, effort);
    state.counters["edges"] = frame.edgeShare * 100;
    state.counters["rate"] = size.pixels() / seconds / 1e6;
}

}  // namespace

void RegisterKernels(const Plan& plan) {
    for (const Size size : plan.sizes) {
        for (const NamedFrame& frame : frames) {
            for (const NamedKernel& kernel : kernels) {
                const std::string name =
                    "kernels/" + NameOf(size) + '/' + frame.name + '/' + kernel.name;
                benchmark::RegisterBenchmark(name.c_str(), MeasureKernel, kernel, frame.kind, size,
                                             plan.effort)
                    ->Iterations(1)
                    ->UseManualTime();
            }
        }
    }
}
