// The command `nevrel`: loads the effect's module and smooths pictures with it, as any host would.
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

}  // namespace

int main(int argc, char** argv) {
    nevrel::PrepareSignals();
    SilenceLibraries();
    return nevrel::RunCommand(argc, argv, [](const std::string& line) {
        dprintf(STDERR_FILENO, "nevrel: %s\n", nevrel::Printable(line).c_str());
    });
}
