// The command `nevrel`, from its arguments to its exit status.
#pragma once

#include <string>

namespace nevrel {

/// How the command ended.
struct Outcome {
    int status = 0;         ///< 0, 1 when it failed, 2 when the command line was wrong
    std::string complaint;  ///< what went wrong, in one line
};

[[nodiscard]] Outcome RunCommand(int argc, const char* const* argv);

}  // namespace nevrel
