#include "host_kit/accounts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace host_kit {
namespace {

std::string Describe(const Loan& loan) {
    return std::string(LoanKindName(loan.kind)) + " " + loan.what + " of command " +
           std::to_string(loan.selector) + " (number " + std::to_string(loan.command) + ")";
}

}  // namespace

std::string_view LoanKindName(LoanKind kind) {
    static constexpr std::array<std::string_view, 6> names{"suite", "handle",    "lock",
                                                           "world", "parameter", "layer"};
    return names.at(static_cast<std::size_t>(kind));
}

void Accounts::lend(Loan loan) {
    const std::lock_guard lock(mutex_);
    loans_.push_back(std::move(loan));
}

bool Accounts::giveBack(LoanKind kind, const void* key, std::uint64_t command) {
    const std::lock_guard lock(mutex_);
    auto found = loans_.end();
    for (auto row = loans_.begin(); row != loans_.end(); ++row) {
        if (row->kind != kind || row->key != key) continue;
        found = row;
        if (row->command == command) break;
    }
    if (found == loans_.end()) return false;
    loans_.erase(found);
    return true;
}

bool Accounts::isLent(LoanKind kind, const void* key) const {
    const std::lock_guard lock(mutex_);
    return std::any_of(loans_.begin(), loans_.end(),
                       [=](const Loan& loan) { return loan.kind == kind && loan.key == key; });
}

void Accounts::keep(LoanKind kind, const void* key) {
    const std::lock_guard lock(mutex_);
    for (Loan& loan : loans_) {
        if (loan.kind == kind && loan.key == key) loan.kept = true;
    }
}

void Accounts::settle(std::uint64_t command, bool failed) {
    const std::lock_guard lock(mutex_);
    std::erase_if(loans_, [=](const Loan& loan) {
        return failed && loan.kind == LoanKind::Layer && loan.command == command;
    });
    for (const Loan& loan : loans_) {
        if (loan.command == command && !loan.kept)
            violations_.push_back("not given back: " + Describe(loan));
    }
}

void Accounts::addViolation(std::string text) {
    const std::lock_guard lock(mutex_);
    violations_.push_back(std::move(text));
}

std::vector<Loan> Accounts::select(bool kept) const {
    const std::lock_guard lock(mutex_);
    std::vector<Loan> rows;
    std::copy_if(loans_.begin(), loans_.end(), std::back_inserter(rows),
                 [=](const Loan& loan) { return loan.kept == kept; });
    return rows;
}

std::vector<Loan> Accounts::outstanding() const { return select(false); }

std::vector<Loan> Accounts::kept() const { return select(true); }

std::vector<std::string> Accounts::violations() const {
    const std::lock_guard lock(mutex_);
    return violations_;
}

std::string Accounts::complaints() const {
    std::string text;
    for (const Loan& loan : outstanding())
        text.append("outstanding: ").append(Describe(loan)).append("\n");
    for (const std::string& violation : violations()) text.append(violation).append("\n");
    return text;
}

}  // namespace host_kit
