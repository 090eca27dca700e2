// nevrel_bench [--quick] [--benchmark_filter=REGEX ...]: measures the kernels and prints tables.
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <cstring>

#include "bench/benchmarks.h"
#include "bench/table_reporter.h"

namespace {

const Plan fullPlan{{{1920, 1080}, {3840, 2160}}, {0.1, 0.25, 1, 4, 16, 64}, {3, 5, 1.0}};

/// Shows that everything runs; its times mean little.
const Plan quickPlan{{{480, 270}}, {0.1, 0.4}, {1, 1, 1.0}};

/// Most hosts have images in pages of the usual size. In huge ones all is faster, and the yardstick
/// more so than the kernels.
void KeepToUsualPages() {
#ifdef __linux__
    prctl(PR_SET_THP_DISABLE, 1, 0, 0, 0);
#endif
}

/// Whether the option is there; takes it out of the arguments.
bool TakeOption(int& count, char** arguments, const char* option) {
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], option) != 0) continue;
        for (--count; i < count; ++i) arguments[i] = arguments[i + 1];
        return true;
    }
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    KeepToUsualPages();
    const Plan& plan = TakeOption(count, arguments, "--quick") ? quickPlan : fullPlan;
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
    RegisterKernels(plan);
    RegisterForms(plan);
    RegisterParts(plan);
    RegisterGrowth(plan);
    TableReporter reporter;
    return benchmark::RunSpecifiedBenchmarks(&reporter) > 0 && !reporter.failed() ? 0 : 1;
}
