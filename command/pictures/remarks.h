// What is worth saying about a picture that did not fail.
#pragma once

#include <string>
#include <vector>

namespace nevrel {

/// Lines that start with a file's name.
struct Remarks {
    std::vector<std::string> warnings;  ///< what a user may not have meant
    std::vector<std::string> details;   ///< what became of things, for those who ask
};

}  // namespace nevrel
