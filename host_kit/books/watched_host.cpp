#include "host_kit/books/watched_host.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "host_kit/command.h"

namespace host_kit {

CallVerdict WatchedHost::enter(HostCall call, A_long number, const char* name) {
    return calls.enter(call, number, name);
}

void WatchedHost::lend(const Loan& loan) { accounts.lend(loan); }

void WatchedHost::giveBack(LoanKind kind, const void* key, const CommandTag& by) {
    accounts.giveBack(kind, key, by);
}

void WatchedHost::keep(PF_Handle handle) { accounts.keep(handle); }

void WatchedHost::violation(const char* what, const CommandTag& command) {
    accounts.addViolation(what, command);
}

PF_Err WatchedHost::send(const Command& command, std::span<const PF_ParamDef> passed,
                         const std::function<PF_Err()>& call) {
    const bool watched = watchesInputs && !command.worlds.empty();
    const std::uint64_t inputSum = watched ? command.worlds.front()->checksum() : 0;
    std::array<std::byte, sizeof command.inData> before{};
    std::memcpy(before.data(), &command.inData, before.size());
    const PF_Err code = call();
    // No byte may change, padding included.
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    command.expect(std::memcmp(before.data(), &command.inData, before.size()) == 0,
                   "wrote to the input record");
    command.expect(passed.empty() ||
                       std::memcmp(passed.data(), command.values.data(), passed.size_bytes()) == 0,
                   "wrote to the parameter array");
    command.expect(!watched || command.worlds.front()->checksum() == inputSum,
                   "wrote to the input image");
    for (const World* world : command.worlds)
        command.expect(world->guardsIntact(), "wrote outside an image");
    return code;
}

void WatchedHost::settle(const CommandTag& command, bool failed) {
    accounts.settle(command, failed);
}

}  // namespace host_kit
