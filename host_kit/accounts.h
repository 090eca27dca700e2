// What the host has lent to an effect, row by row, and what the effect did that a host refuses.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "sdk/effect_api.h"

namespace host_kit {

enum class LoanKind { Suite, Handle, Lock, World, Parameter, Layer };

/// One thing lent and not yet given back.
struct Loan {
    LoanKind kind;
    const void* key;        ///< tells it apart from others of its kind
    std::string what;       ///< for people, e.g. "PF World Suite 1"
    std::uint64_t command;  ///< serial number of the command that borrowed it
    PF_Cmd selector;        ///< that command's selector
    bool kept = false;      ///< handed to the host as a result, so it may outlive the command
};

/// Book of everything lent by one host. Safe to use from several threads.
class Accounts {
  public:
    void lend(Loan loan);
    /// Strikes out one matching row, preferably one of `command`. False when there is none.
    [[nodiscard]] bool giveBack(LoanKind kind, const void* key, std::uint64_t command);
    [[nodiscard]] bool isLent(LoanKind kind, const void* key) const;
    /// Marks a handle as a command's result: it is no longer outstanding, but `kept`.
    void keep(LoanKind kind, const void* key);
    /// Ends a command: each row that it borrowed and neither gave back nor handed over is a
    /// violation. After a failed command the host takes layers back by itself.
    void settle(std::uint64_t command, bool failed);
    void addViolation(std::string text);

    /// Rows lent and neither given back nor handed to the host.
    [[nodiscard]] std::vector<Loan> outstanding() const;
    /// Rows that were handed to the host as results and still live: sequence data, pre-render data.
    [[nodiscard]] std::vector<Loan> kept() const;
    [[nodiscard]] std::vector<std::string> violations() const;
    /// Outstanding rows and violations as text, one a line; empty when all is in order.
    [[nodiscard]] std::string complaints() const;

  private:
    [[nodiscard]] std::vector<Loan> select(bool kept) const;

    mutable std::mutex mutex_;
    std::vector<Loan> loans_;
    std::vector<std::string> violations_;
};

[[nodiscard]] std::string_view LoanKindName(LoanKind kind);

}  // namespace host_kit
