// The least of a host that the kernels need.
#pragma once

#include <cstddef>
#include <memory>

#include "render/render_job.h"

/// Lends the suites that a kernel asks for. Its copy goes row by row; its scratch memory comes from
/// a pool, as that of a host which renders frame after frame, so that the system need not map fresh
/// pages for every call.
class BenchHost {
  public:
    BenchHost();
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;

    /// For the jobs of this host; valid as long as the host.
    [[nodiscard]] PF_InData* inData() { return &inData_; }

    /// At least `bytes` bytes of the pool, uncleared, until the next call.
    [[nodiscard]] std::byte* scratch(std::size_t bytes);

  private:
    PF_InData inData_{};
    std::unique_ptr<std::byte[]> pool_;
    std::size_t poolSize_ = 0;
};

/// Copies an image into another of the same size, row by row.
PF_Err CopyWorld(PF_ProgPtr effectRef, PF_EffectWorld* from, PF_EffectWorld* to, PF_Rect* fromRect,
                 PF_Rect* toRect);
