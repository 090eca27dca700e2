// The command `nevrel`: loads the effect's module and smooths pictures with it, as any host would.
#include <unistd.h>

#include <cstdio>

#include "standalone/nevrel/run_command.h"
#include "standalone/nevrel/whole_file.h"

namespace {

/// Picture libraries print to `stderr` on their own; the one line that the user gets comes from here.
void SilenceLibraries() {
    if (std::FILE* nowhere = std::fopen("/dev/null", "w")) stderr = nowhere;
}

}  // namespace

int main(int argc, char** argv) {
    nevrel::PrepareSignals();
    SilenceLibraries();
    const nevrel::Outcome outcome = nevrel::RunCommand(argc, argv);
    if (!outcome.complaint.empty()) dprintf(STDERR_FILENO, "nevrel: %s\n", outcome.complaint.c_str());
    return outcome.status;
}
