// Signals that end the program.
#pragma once

#include <functional>
#include <shared_mutex>
#include <string>

namespace nevrel {

/// From now on a signal that ends the program, such as an interrupt, waits for the files that are
/// being put in place, has the last words said and ends it with status 128 + its number. To be
/// called before there are other threads.
void PrepareSignals();

/// From now on a reader of the output that is gone makes writing to it fail, no more.
void OutliveReaders();

/// While it lives a signal does not end the program.
class EndingSignalsWait {
  public:
    EndingSignalsWait();

  private:
    std::shared_lock<std::shared_mutex> lock_;
};

/// While it lives, what it is given is called once, on a thread of its own, before a signal ends
/// the program.
class LastWords {
  public:
    explicit LastWords(std::function<void()> say);
    ~LastWords();
    LastWords(const LastWords&) = delete;
    LastWords& operator=(const LastWords&) = delete;
};

}  // namespace nevrel
