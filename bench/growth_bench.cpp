// Time against size: what a pixel costs must not depend on how many there are.
#include <cmath>
#include <cstdio>

#include "bench/benchmarks.h"
#include "bench/kernel_timing.h"

namespace {

/// One small picture repeated over the whole frame: the same mixture of edges at every size.
Image8 Sheet(Size size) {
    const Image8 tile = MakeFrame(FrameKind::cel, 426, 240);
    Image8 sheet(size.width, size.height);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x)
            sheet.at(x, y) = tile.at(x % tile.width, y % tile.height);
    }
    return sheet;
}

Image8 Cel(Size size) { return MakeFrame(FrameKind::cel, size.width, size.height); }
Image8 Lines(Size size) { return MakeFrame(FrameKind::lines, size.width, size.height); }
Image8 Diagonals(Size size) { return MakeFrame(FrameKind::diagonals, size.width, size.height); }
Image8 Noise(Size size) { return MakeFrame(FrameKind::noise, size.width, size.height); }

struct Series {
    const char* name;
    Image8 (*frame)(Size size);
};
constexpr Series allSeries[] = {{"cel", Cel},
                                {"cel sheet", Sheet},
                                {"lines", Lines},
                                {"diagonals", Diagonals},
                                {"noise", Noise}};

void MeasureGrowth(benchmark::State& state, const Series& series, double megapixels,
                   const Effort& effort) {
    const Size size{static_cast<int>(std::lround(std::sqrt(megapixels * 1e6 * 16 / 9))),
                    static_cast<int>(std::lround(std::sqrt(megapixels * 1e6 * 9 / 16)))};
    const Image8 frame = series.frame(size);
    FramePair pair(frame, PF_PixelFormat_ARGB32);
    const RenderJob job = pair.job(false, false);
    const double seconds = TimeKernel(state, pair, job, effort);
    state.counters["edges"] = EdgeShare(frame, job.colorThreshold) * 100;
    state.counters["pixel"] = seconds / size.pixels() * 1e9;
}

}  // namespace

void RegisterGrowth(const Plan& plan) {
    for (const Series& series : allSeries) {
        for (const double megapixels : plan.growthMegapixels) {
            char name[64];
            std::snprintf(name, sizeof name, "growth/%s/%g", series.name, megapixels);
            benchmark::RegisterBenchmark(name, MeasureGrowth, series, megapixels, plan.effort)
                ->Iterations(1)
                ->UseManualTime();
        }
    }
}
