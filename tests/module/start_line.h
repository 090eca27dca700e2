// A common start for threads.
#pragma once

#include <atomic>
#include <thread>

/// Holds threads back until all of them have come, then lets them go at the same moment. It spins:
/// where std::latch sleeps on a condition variable, as with mingw, it now and then misses its
/// wake-up.
class StartLine {
  public:
    explicit StartLine(int threads) : missing_(threads) {}

    void arriveAndWait() {
        --missing_;
        while (missing_ > 0) std::this_thread::yield();
    }

  private:
    std::atomic<int> missing_;
};
