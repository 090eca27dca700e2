// The groups of benchmarks, and what each puts into the table.
#pragma once

#include <string>
#include <vector>

#include "bench/frame_pair.h"
#include "bench/measure.h"

/// What one run of the program measures.
struct Plan {
    std::vector<Size> sizes;
    std::vector<double> growthMegapixels;
    Effort effort;
};

/// The four frames that every kernel is measured on.
struct NamedFrame {
    FrameKind kind;
    const char* name;
};
inline constexpr NamedFrame frames[] = {{FrameKind::blank, "blank"},
                                        {FrameKind::cel, "cel"},
                                        {FrameKind::busy, "busy"},
                                        {FrameKind::noise, "noise"}};

/// The nine kernels.
struct NamedKernel {
    const char* name;
    PF_PixelFormat format;
    bool key, keyInvert;
};
inline constexpr NamedKernel kernels[] = {
    {"Kernel8", PF_PixelFormat_ARGB32, false, false},
    {"Kernel8Key", PF_PixelFormat_ARGB32, true, false},
    {"Kernel8KeyInvert", PF_PixelFormat_ARGB32, true, true},
    {"Kernel16", PF_PixelFormat_ARGB64, false, false},
    {"Kernel16Key", PF_PixelFormat_ARGB64, true, false},
    {"Kernel16KeyInvert", PF_PixelFormat_ARGB64, true, true},
    {"KernelFloat", PF_PixelFormat_ARGB128, false, false},
    {"KernelFloatKey", PF_PixelFormat_ARGB128, true, false},
    {"KernelFloatKeyInvert", PF_PixelFormat_ARGB128, true, true}};

/// "1920x1080".
[[nodiscard]] inline std::string NameOf(Size size) {
    return std::to_string(size.width) + 'x' + std::to_string(size.height);
}

/// Names of benchmarks are "group/label/label/..."; their numbers are counters.
void RegisterKernels(const Plan& plan);
void RegisterForms(const Plan& plan);
void RegisterParts(const Plan& plan);
void RegisterGrowth(const Plan& plan);
