// The command `nevrel`, from its arguments to its exit status.
#pragma once

#include "command/in_parallel.h"

namespace nevrel {

/// Returns the exit status: 0, 1 when something failed, 2 when the command line was wrong and
/// nothing was done. `complain` gets a line for each thing that went wrong; there is none when the
/// status is 0.
[[nodiscard]] int RunCommand(int argc, const char* const* argv, const Complain& complain);

}  // namespace nevrel
