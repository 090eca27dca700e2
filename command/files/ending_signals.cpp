#include "command/files/ending_signals.h"

#include <unistd.h>

#include <atomic>
#include <csignal>

namespace nevrel {
namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

/// Set in `waits` once a signal has come; the rest of it counts the waits that live. One word for
/// both, so that no wait can begin unseen between a signal and the end of the program.
constexpr unsigned ending = 1U << 31;

std::atomic<unsigned> waits{0};
std::atomic<int> pendingSignal{0};

void EndBySignal(int number) {
    signal(number, SIG_DFL);
    raise(number);
}

void OnSignal(int number) {
    pendingSignal = number;
    if ((waits.fetch_or(ending) & ~ending) == 0) EndBySignal(number);
}

void EndWait() {
    if (waits.fetch_sub(1) == (ending | 1U)) EndBySignal(pendingSignal);
}

}  // namespace

void PrepareSignals() {
    for (const int number : endingSignals) {
        if (signal(number, OnSignal) == SIG_IGN) signal(number, SIG_IGN);
    }
    signal(SIGXFSZ, SIG_IGN);
}

void OutliveReaders() { signal(SIGPIPE, SIG_IGN); }

EndingSignalsWait::EndingSignalsWait() {
    if ((waits.fetch_add(1) & ending) == 0) return;
    EndWait();
    for (;;) pause();
}

EndingSignalsWait::~EndingSignalsWait() { EndWait(); }

}  // namespace nevrel
