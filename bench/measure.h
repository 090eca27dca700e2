// Timing by medians of repeats in a row.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cassert>
#include <chrono>
#include <ctime>
#include <vector>

/// A clock that, where the platform has one, runs only while this thread does: on a busy machine a
/// long call loses the processor for a while and a short one does not, which would skew their
/// ratio.
[[nodiscard]] inline double ThreadSeconds() {
#ifdef CLOCK_THREAD_CPUTIME_ID
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
#else
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return now.count();
#endif
}

/// How long to measure.
struct Effort {
    int rounds;         ///< how often the things to compare take turns
    int repeats;        ///< calls in a row, each time it is a thing's turn
    double rowSeconds;  ///< a row ends early once it has taken this long
};

/// What the calls of one thing took.
class Samples {
  public:
    /// One row of calls of `run`. Before each, `prepare` is called, which does not count.
    template <typename Run, typename Prepare>
    void row(const Effort& effort, Run run, Prepare prepare) {
        double total = 0;
        for (int i = 0; i < effort.repeats && total < effort.rowSeconds; ++i) {
            prepare();
            const double start = ThreadSeconds();
            run();
            benchmark::ClobberMemory();
            const double taken = ThreadSeconds() - start;
            seconds_.push_back(taken);
            total += taken;
        }
    }

    template <typename Run>
    void row(const Effort& effort, Run run) {
        row(effort, run, [] {});
    }

    /// In seconds.
    [[nodiscard]] double median() const {
        assert(!seconds_.empty());
        std::vector<double> sorted = seconds_;
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
        std::nth_element(sorted.begin(), middle, sorted.end());
        return *middle;
    }

  private:
    std::vector<double> seconds_;
};
