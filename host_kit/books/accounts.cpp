#include "host_kit/books/accounts.h"

#include <array>
#include <cstddef>

namespace host_kit {
namespace {

std::string NameOf(LoanKind kind) {
    static constexpr std::array names{"suite", "handle", "lock", "world", "parameter", "layer"};
    return names.at(static_cast<std::size_t>(kind));
}

std::string Describe(const CommandTag& command) {
    return "command " + std::to_string(command.selector) + " (number " +
           std::to_string(command.number) + ")";
}

std::string Describe(const Loan& loan) {
    std::string text = NameOf(loan.kind) + " ";
    if (*loan.name != '\0') text.append(loan.name).append(" ");
    return text + std::to_string(loan.number) + " of " + Describe(loan.borrower);
}

}  // namespace

void Accounts::lend(const Loan& loan) {
    const std::lock_guard lock(mutex_);
    rows_.push_back({loan, false});
}

void Accounts::giveBack(LoanKind kind, const void* key, const CommandTag& by) {
    const std::lock_guard lock(mutex_);
    auto found = rows_.end();
    for (auto row = rows_.begin(); row != rows_.end(); ++row) {
        if (row->loan.kind != kind || row->loan.key != key) continue;
        found = row;
        if (row->loan.borrower.number == by.number) break;
    }
    if (found == rows_.end()) {
        note(NameOf(kind) + " given back that was not lent", by);
    } else {
        rows_.erase(found);
    }
}

void Accounts::keep(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    for (Row& row : rows_) {
        if (row.loan.kind == LoanKind::Handle && row.loan.key == handle) row.kept = true;
    }
}

void Accounts::settle(const CommandTag& command, bool failed) {
    const std::lock_guard lock(mutex_);
    std::erase_if(rows_, [&](const Row& row) {
        return failed && row.loan.kind == LoanKind::Layer &&
               row.loan.borrower.number == command.number;
    });
    for (const Row& row : rows_) {
        if (row.loan.borrower.number == command.number && !row.kept)
            violations_.push_back("not given back: " + Describe(row.loan));
    }
}

void Accounts::addViolation(const std::string& what, const CommandTag& command) {
    const std::lock_guard lock(mutex_);
    note(what, command);
}

void Accounts::note(const std::string& what, const CommandTag& command) {
    violations_.push_back(what + " in " + Describe(command));
}

std::string Accounts::complaints() const {
    const std::lock_guard lock(mutex_);
    std::string text;
    for (const Row& row : rows_) {
        if (!row.kept) text.append("outstanding: ").append(Describe(row.loan)).append("\n");
    }
    for (const std::string& violation : violations_) text.append(violation).append("\n");
    return text;
}

}  // namespace host_kit
