// The parts of a kernel call apart, in the order in which they run.
#include <new>

#include "bench/benchmarks.h"
#include "host/suite_handler.h"
#include "kernel/edges/edge_scan.h"
#include "kernel/forms.h"
#include "kernel/pass/smoothing_pass.h"
#include "kernel/pixels/depth16.h"
#include "kernel/pixels/depth8.h"
#include "kernel/pixels/depth_float.h"
#include "render/map_world.h"

namespace {

std::uint8_t* Allocate(MapWorld& world, const RenderJob& job) {
    if (world.allocate(job.outputWorld->width, job.outputWorld->height) != PF_Err_NONE)
        throw std::bad_alloc();
    return world.memory();
}

template <typename Pixel>
ImageView<Pixel> ViewOf(const PF_EffectWorld& world) {
    return {world.data, world.rowbytes, world.width, world.height};
}

/// The parts of one kernel on one frame, each to be called when those above it have been.
template <typename Depth, KeyMode mode>
class Parts {
    using Pixel = typename Depth::Pixel;

  public:
    explicit Parts(const RenderJob& job)
        : job_(job),
          depth_(job),
          key_(job),
          input_(ViewOf<const Pixel>(*job.inputWorld)),
          output_(ViewOf<Pixel>(*job.outputWorld)),
          map_(Allocate(mapWorld_, job), input_.width(), input_.height()),
          weights_(job.softness, job.bias) {}

    void firstCopy() {
        if constexpr (mode == KeyMode::NoKey) {
            suites_.get<PF_WorldTransformSuite1>().copy(job_.inData->effect_ref, job_.inputWorld,
                                                        job_.outputWorld, nullptr, nullptr);
        } else {
            MarkingCopy(key_, input_, output_, forms_.markPixels);
        }
    }
    void scan() { ScanEdges(depth_, ViewOf<const Pixel>(*job_.outputWorld), map_, forms_.scanRow); }
    void pass() {
        SmoothingPass<Depth, mode>(ImagePair<Depth, mode>(input_, output_, key_, forms_.markPixels),
                                   map_, weights_, FastestForms().findWindows, forms_.blendAcross)
            .run();
    }

  private:
    RenderJob job_;
    SuiteHandler suites_{job_.inData->pica_basicP};
    MapWorld mapWorld_{suites_, job_.inData->effect_ref};
    Depth depth_;
    ColorKey<Depth, mode> key_;
    ImageView<const Pixel> input_;
    ImageView<Pixel> output_;
    EdgeMap map_;
    BlendWeights<typename Depth::Weights> weights_;
    const PixelForms<Pixel>& forms_ = FastestForms().of<Pixel>();
};

template <typename Depth, KeyMode mode>
void MeasureParts(benchmark::State& state, PF_PixelFormat format, FrameKind kind, Size size,
                  const Effort& effort) {
    FramePair pair(KeptFrame(kind, size).image, format);
    Parts<Depth, mode> parts(pair.job(mode != KeyMode::NoKey, false));
    while (state.KeepRunning()) {
        Samples memcpy, first, scan, pass;
        for (int round = 0; round < effort.rounds; ++round) {
            memcpy.row(effort, [&] { pair.copyWhole(); });
            first.row(effort, [&] { parts.firstCopy(); });
            scan.row(effort, [&] { parts.scan(); });
            pass.row(
                effort, [&] { parts.pass(); }, [&] { parts.firstCopy(); });
        }
        state.SetIterationTime(first.median() + scan.median() + pass.median());
        state.counters["memcpy"] = memcpy.median() * 1e3;
        state.counters["first"] = first.median() * 1e3;
        state.counters["scan"] = scan.median() * 1e3;
        state.counters["pass"] = pass.median() * 1e3;
    }
}

template <typename Depth, KeyMode mode>
void RegisterOne(const Plan& plan, Size size, const NamedFrame& frame, const char* kernel,
                 PF_PixelFormat format) {
    const std::string name = "parts/" + NameOf(size) + '/' + frame.name + '/' + kernel;
    benchmark::RegisterBenchmark(name.c_str(), MeasureParts<Depth, mode>, format, frame.kind, size,
                                 plan.effort)
        ->Iterations(1)
        ->UseManualTime();
}

}  // namespace

void RegisterParts(const Plan& plan) {
    for (const Size size : plan.sizes) {
        for (const NamedFrame& frame : frames) {
            RegisterOne<Depth8, KeyMode::NoKey>(plan, size, frame, "Kernel8",
                                                PF_PixelFormat_ARGB32);
            RegisterOne<Depth8, KeyMode::Key>(plan, size, frame, "Kernel8Key",
                                              PF_PixelFormat_ARGB32);
            RegisterOne<Depth16, KeyMode::NoKey>(plan, size, frame, "Kernel16",
                                                 PF_PixelFormat_ARGB64);
            RegisterOne<Depth16, KeyMode::Key>(plan, size, frame, "Kernel16Key",
                                               PF_PixelFormat_ARGB64);
            RegisterOne<DepthFloat, KeyMode::NoKey>(plan, size, frame, "KernelFloat",
                                                    PF_PixelFormat_ARGB128);
            RegisterOne<DepthFloat, KeyMode::Key>(plan, size, frame, "KernelFloatKey",
                                                  PF_PixelFormat_ARGB128);
        }
    }
}
