// What the host has lent to an effect, row by row, and what the effect did that a host refuses.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "host_kit/observer.h"

namespace host_kit {

/// Book of everything lent by one host. Safe to use from several threads.
class Accounts {
  public:
    void lend(const Loan& loan);
    /// Strikes out one matching row, preferably one that `by` borrowed. None is a violation.
    void giveBack(LoanKind kind, const void* key, const CommandTag& by);
    /// Marks a handle as a command's result, which may outlive the command.
    void keep(PF_Handle handle);
    /// Ends a command: each row that it borrowed and neither gave back nor handed over is a
    /// violation. After a failed command the host takes layers back by itself.
    void settle(const CommandTag& command, bool failed);
    void addViolation(const std::string& what, const CommandTag& command);

    /// Rows neither given back nor handed to the host, and violations, as text, one a line; empty
    /// when all is in order.
    [[nodiscard]] std::string complaints() const;

  private:
    struct Row {
        Loan loan;
        bool kept;
    };

    void note(const std::string& what, const CommandTag& command);

    mutable std::mutex mutex_;
    std::vector<Row> rows_;
    std::vector<std::string> violations_;
};

}  // namespace host_kit
