#include "command/files/ending_signals.h"

#include <unistd.h>

#include <csignal>
#include <mutex>
#include <thread>
#include <utility>

namespace nevrel {
namespace {

/// Shared by what must not be cut short, held alone by the end of the program.
std::shared_mutex& Ending() {
    static std::shared_mutex mutex;
    return mutex;
}

struct Words {
    std::mutex mutex;
    std::function<void()> say;
};

Words& CurrentWords() {
    static Words words;
    return words;
}

[[noreturn]] void EndBySignal(int number) {
    const std::unique_lock ending(Ending());
    Words& words = CurrentWords();
    const std::lock_guard lock(words.mutex);
    if (words.say) words.say();
    _exit(128 + number);
}

/// The signals that end the program, but for those that whoever started it has it ignore.
sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU}) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler != SIG_IGN) sigaddset(&signals, number);
    }
    return signals;
}

}  // namespace

void PrepareSignals() {
    const sigset_t signals = EndingSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals] {
        int number = 0;
        while (sigwait(&signals, &number) != 0) {
        }
        EndBySignal(number);
    }).detach();
    signal(SIGXFSZ, SIG_IGN);
}

void OutliveReaders() { signal(SIGPIPE, SIG_IGN); }

EndingSignalsWait::EndingSignalsWait() : lock_(Ending()) {}

LastWords::LastWords(std::function<void()> say) {
    const std::lock_guard lock(CurrentWords().mutex);
    CurrentWords().say = std::move(say);
}

LastWords::~LastWords() {
    const std::lock_guard lock(CurrentWords().mutex);
    CurrentWords().say = nullptr;
}

}  // namespace nevrel
