// Running the command `nevrel` inside a fuzz target, on files in a folder of the target's own.
#pragma once

#include <string>
#include <vector>

#include "tests/temp_folder.h"

/// What the targets of the command share: the folder, and the module, which stays loaded. It lives
/// as long as the process.
class CommandBench {
  public:
    static CommandBench& get();

    /// A path in the folder.
    [[nodiscard]] std::string file(const std::string& name) const {
        return folder_.file(name.c_str());
    }
    /// Runs the command with these arguments and the module. Returns whether it succeeded; requires
    /// that a failure is told in one line.
    bool run(const std::vector<std::string>& arguments) const;
    /// Removes all files but the module; returns their number.
    int clear() const;

  private:
    CommandBench();

    TempFolder folder_;
};
