// The plain form of a kernel beside its vector forms.
#include <algorithm>
#include <array>

#include "bench/benchmarks.h"
#include "render/dispatch_kernel.h"

namespace {

constexpr std::array setNames{"plain", "sse2", "avx2", "avx512"};

/// A set that the processor lacks is measured as the widest that it has.
void MeasureForms(benchmark::State& state, const NamedKernel& kernel, FrameKind kind, Size size,
                  const Effort& effort) {
    FramePair pair(KeptFrame(kind, size).image, kernel.format);
    const RenderJob job = pair.job(kernel.key, kernel.keyInvert);
    const auto usable = UsableForms();
    PF_Err err = PF_Err_NONE;
    std::array<Samples, setNames.size()> samples;
    while (state.KeepRunning()) {
        for (int round = 0; round < effort.rounds; ++round) {
            for (std::size_t i = 0; i < samples.size(); ++i) {
                const Forms& forms = *usable[std::min(i, usable.size() - 1)];
                samples[i].row(effort, [&] { err |= DispatchKernel(job, forms); });
            }
        }
        state.SetIterationTime(samples.back().median());
    }
    if (err != PF_Err_NONE) state.SkipWithError("the kernel failed");
    for (std::size_t i = 0; i < samples.size(); ++i)
        state.counters[setNames[i]] = samples[i].median() * 1e3;
    state.counters["gain"] = state.counters["plain"] / state.counters["avx512"];
}

}  // namespace

void RegisterForms(const Plan& plan) {
    for (const Size size : plan.sizes) {
        for (const NamedFrame& frame : frames) {
            for (const NamedKernel& kernel : kernels) {
                if (kernel.key) continue;
                const std::string name =
                    "forms/" + NameOf(size) + '/' + frame.name + '/' + kernel.name;
                benchmark::RegisterBenchmark(name.c_str(), MeasureForms, kernel, frame.kind, size,
                                             plan.effort)
                    ->Iterations(1)
                    ->UseManualTime();
            }
        }
    }
}
