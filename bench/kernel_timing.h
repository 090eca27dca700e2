// Timing of whole kernel calls beside the yardstick.
#pragma once

#include "bench/frame_pair.h"
#include "bench/measure.h"

/// Measures the job, which is one of the pair's, and sets the counters that every table of whole
/// kernels has. Returns the median seconds of a call.
double TimeKernel(benchmark::State& state, FramePair& pair, const RenderJob& job,
                  const Effort& effort);
