// Several pieces of work at once, with what they tell in the order in which they were given.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace nevrel {

/// Takes a line about what went wrong, or about what else the user should know.
using Complain = std::function<void(const std::string&)>;

/// How a piece of work went.
struct Outcome {
    bool succeeded = true;
    std::vector<std::string> lines;  ///< for the user
};

/// Does the pieces 0 .. count - 1, each once, on up to `threads` threads (the caller's is one of
/// them) that take them in their order. `work` does one piece; it must not throw. Its lines are
/// passed to `complain`, from one thread at a time, as soon as all pieces before it are done.
/// Returns whether all succeeded.
bool DoInParallel(std::size_t count, unsigned threads,
                  const std::function<Outcome(std::size_t)>& work, const Complain& complain);

}  // namespace nevrel
