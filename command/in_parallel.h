// Pieces of work, several at once, told in the order in which they were given.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "command/pictures/remarks.h"

namespace nevrel {

/// Takes a line about what went wrong, or about what else the user should know.
using Complain = std::function<void(const std::string&)>;

/// How a piece of work went.
struct Outcome {
    enum class Verdict {
        Done,
        Skipped,         ///< there was nothing to do
        Failed,          ///< and would fail again
        FailedForAWhile  ///< may go better later: a full disk, a share that is away
    };
    Verdict verdict = Verdict::Done;
    std::vector<std::string> lines;  ///< for the user
    StageTimes times{};

    [[nodiscard]] bool succeeded() const { return verdict <= Verdict::Skipped; }
};

/// Does work on a picture and tells how it went; what it throws is a failure of that picture.
[[nodiscard]] Outcome Attempt(const std::filesystem::path& picture,
                              const std::function<void()>& work);

/// Does one piece; must not throw.
using Work = std::function<Outcome(std::size_t)>;
/// Learns how a piece went; false stops the work.
using Tell = std::function<bool(std::size_t, const Outcome&)>;

/// Does the pieces 0 .. count - 1, each once, on up to `threads` threads (the caller's is one of
/// them) that take them in their order. `tell` is called for each piece in their order, from one
/// thread at a time, as soon as all pieces before it are done. Once it returns false no piece is
/// begun any more; those that were are finished and told.
void DoInParallel(std::size_t count, unsigned threads, const Work& work, const Tell& tell);

}  // namespace nevrel
