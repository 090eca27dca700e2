// Where the C++ runtime finds what a thread has thrown and caught: under the thread's id. The
// runtime library's own form takes a thread-local index and leaves it to the process when the
// module is unloaded; once a process has none left, a throw ends it.
#include <windows.h>
// windows.h comes first everywhere.
#include <cxxabi.h>

#include <atomic>
#include <cstdlib>
#include <exception>
#include <utility>

// As the C++ ABI lays it out.
struct abi::__cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

namespace {

struct ThreadState {
    abi::__cxa_eh_globals exceptions;
    DWORD thread;
    ThreadState* next;
};

/// The states of all threads that ever threw. Between commands a state is empty, so a thread takes
/// over that of an ended one with its id.
class ThreadStates {
  public:
    constexpr ThreadStates() = default;
    ~ThreadStates() {
        for (ThreadState* state = first_; state != nullptr;)
            std::free(std::exchange(state, state->next));
    }
    ThreadStates(const ThreadStates&) = delete;
    ThreadStates& operator=(const ThreadStates&) = delete;

    ThreadState& current() {
        const DWORD thread = GetCurrentThreadId();
        for (ThreadState* state = first_; state != nullptr; state = state->next) {
            if (state->thread == thread) return *state;
        }
        return add(thread);
    }

  private:
    ThreadState& add(DWORD thread) {
        auto* state = static_cast<ThreadState*>(std::malloc(sizeof(ThreadState)));
        if (state == nullptr) std::terminate();  // as the runtime library does
        *state = {{}, thread, first_};
        while (!first_.compare_exchange_weak(state->next, state)) {
        }
        return *state;
    }

    std::atomic<ThreadState*> first_{nullptr};
};

constinit ThreadStates states;

}  // namespace

abi::__cxa_eh_globals* abi::__cxa_get_globals() noexcept { return &states.current().exceptions; }

abi::__cxa_eh_globals* abi::__cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }
