// Several pieces of work at once, with their failures told as if they had been done one by one.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace nevrel {

/// Takes a line about what went wrong.
using Complain = std::function<void(const std::string&)>;

/// Does the pieces 0 .. count - 1, each once, on up to `threads` threads (the caller's is one of
/// them) that take them in their order. `work` does one piece and returns what went wrong, empty
/// when nothing did; it must not throw. Each failure is passed to `complain`, from one thread at a
/// time, as soon as all pieces before it are done. Returns whether none failed.
bool DoInTurn(std::size_t count, unsigned threads,
              const std::function<std::string(std::size_t)>& work, const Complain& complain);

}  // namespace nevrel
