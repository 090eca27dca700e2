// The plain form of a kernel beside its vector forms.
#include "bench/benchmarks.h"
#include "kernel/dispatch_kernel.h"

namespace {

void MeasureForms(benchmark::State& state, const NamedKernel& kernel, FrameKind kind, Size size,
                  const Effort& effort) {
    BenchHost host;
    FramePair pair(KeptFrame(kind, size).image, kernel.format);
    const RenderJob job = pair.job(host, kernel.key, kernel.keyInvert);
    PF_Err err = PF_Err_NONE;
    const auto measure = [&](Samples& samples, InstructionSet set) {
        samples.row(effort, [&] { err |= DispatchKernel(job, set); });
    };
    Samples plain;
    Samples sse2;
    Samples best;
    while (state.KeepRunning()) {
        for (int round = 0; round < effort.rounds; ++round) {
            measure(plain, InstructionSet::plain);
            measure(sse2, InstructionSet::sse2);
            measure(best, BestInstructionSet());
        }
        state.SetIterationTime(best.median());
    }
    if (err != PF_Err_NONE) state.SkipWithError("the kernel failed");
    state.counters["plain"] = plain.median() * 1e3;
    state.counters["sse2"] = sse2.median() * 1e3;
    state.counters["best"] = best.median() * 1e3;
    state.counters["gain"] = plain.median() / best.median();
}

}  // namespace

void RegisterForms(const Plan& plan) {
    for (const Size size : plan.sizes) {
        for (const NamedFrame& frame : kFrames) {
            for (const NamedKernel& kernel : kKernels) {
                if (kernel.key) continue;
                const std::string name = "forms/" + NameOf(size) + '/' + frame.name + '/' + kernel.name;
                benchmark::RegisterBenchmark(name.c_str(), MeasureForms, kernel, frame.kind, size,
                                             plan.effort)
                    ->Iterations(1)
                    ->UseManualTime();
            }
        }
    }
}
