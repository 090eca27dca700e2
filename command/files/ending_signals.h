// The signals that end the program, and how they wait for what must not be left half done.
#pragma once

namespace nevrel {

/// Lets the signals that users and systems end programs with do so only when no EndingSignalsWait
/// lives, unless they were ignored from the start, and makes a file size limit an error of the
/// write that passes it. Call once, before there are other threads.
void PrepareSignals();

/// From now on a line that nobody reads any more does not end the program.
void OutliveReaders();

/// While one lives, in whatever thread, the signals that end the program wait. Once one of them has
/// come, making another waits for the end of the program.
class EndingSignalsWait {
  public:
    EndingSignalsWait();
    ~EndingSignalsWait();
    EndingSignalsWait(const EndingSignalsWait&) = delete;
    EndingSignalsWait& operator=(const EndingSignalsWait&) = delete;
};

}  // namespace nevrel
