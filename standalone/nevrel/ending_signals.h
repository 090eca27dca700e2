// The signals that end the program, and how they wait for what must not be left half done.
#pragma once

namespace nevrel {

/// Lets SIGINT, SIGTERM and SIGHUP end the program only when no EndingSignalsWait lives, unless they were
/// ignored from the start, and makes a file size limit an error of the write that passes it. Call once,
/// before there are other threads.
void PrepareSignals();

/// While one lives, in whatever thread, the signals that end the program wait. Once one of them has come,
/// making another waits for the end of the program.
class EndingSignalsWait {
  public:
    EndingSignalsWait();
    ~EndingSignalsWait();
    EndingSignalsWait(const EndingSignalsWait&) = delete;
    EndingSignalsWait& operator=(const EndingSignalsWait&) = delete;
};

}  // namespace nevrel
