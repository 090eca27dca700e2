#include "bench/kernel_timing.h"

#include "render/dispatch_kernel.h"

double TimeKernel(benchmark::State& state, FramePair& pair, const RenderJob& job,
                  const Effort& effort) {
    Samples kernel;
    Samples copy;
    PF_Err err = PF_Err_NONE;
    while (state.KeepRunning()) {
        for (int round = 0; round < effort.rounds; ++round) {
            copy.row(effort, [&] { pair.copyWhole(); });
            kernel.row(effort, [&] { err |= DispatchKernel(job); });
        }
        state.SetIterationTime(kernel.median());
    }
    if (err != PF_Err_NONE) state.SkipWithError("the kernel failed");
    state.counters["ms"] = kernel.median() * 1e3;
    state.counters["multiple"] = kernel.median() / copy.median();
    return kernel.median();
}
