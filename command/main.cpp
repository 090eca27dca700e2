// The command `nevrel`: loads the effect's module and smooths pictures with it, as any host would.
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "command/errors.h"
#include "command/files/ending_signals.h"
#include "command/run_command.h"

namespace {

/// Picture libraries print to `stderr` on their own; the one line that the user gets comes from
/// here.
void SilenceLibraries() {
    if (std::FILE* nowhere = std::fopen("/dev/null", "w")) stderr = nowhere;
}

/// Lets a picture's memory serve the next one too: given back, it would have to be cleared anew.
void KeepMemory() {
    constexpr int gigabyte = 1 << 30;
    mallopt(M_MMAP_THRESHOLD, gigabyte);
    mallopt(M_TRIM_THRESHOLD, gigabyte);
}

}  // namespace

int main(int argc, char** argv) {
    nevrel::PrepareSignals();
    SilenceLibraries();
    KeepMemory();
    return nevrel::RunCommand(argc, argv, [](const std::string& line) {
        dprintf(STDERR_FILENO, "nevrel: %s\n", nevrel::Printable(line).c_str());
    });
}
