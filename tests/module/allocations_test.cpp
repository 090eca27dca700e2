// Every memory allocation inside the module fails, once and from there on: each command answers
// with a code, and everything borrowed is back.
#include <dlfcn.h>

#include <set>

#include "tests/module/allocation_faults.h"
#include "tests/module/every_command.h"
#include "windows_stand_in/dialog_shower.h"

using namespace host_kit;

namespace {

struct EscapingUser : DialogShower {
    UserAction nextAction(const Window& /*dialog*/) override { return {UserActionKind::Escape}; }
};

/// The module stays loaded: its runtime library never gives back the memory that it keeps for
/// exceptions.
AllocationFaults& FaultsOf(const Module& module) {
    void* library = dlopen(module.path().c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    auto* faults = static_cast<AllocationFaults*>(dlsym(library, allocationFaultsName));
    dlclose(library);
    return *faults;
}

/// Fails each allocation of the command in turn; returns their number. What is thrown below the
/// dialog manager ends the dialog, of which nothing is kept then.
int FailEachAllocation(const ModuleCommand& command, bool fromThereOn) {
    Session session;
    EscapingUser user;
    Window mainWindow{.shower = &user};
    session.host.identity.mainWindow = &mainWindow;
    AllocationFaults& faults = FaultsOf(session.module);
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(std::string(command.name) + ", allocation " + std::to_string(nth));
        Stage stage(session);
        faults = {.nth = nth, .fromThereOn = fromThereOn};
        const PF_Err code = command.run(stage).error;
        const bool failed = faults.count >= nth;
        faults = {};
        if (!failed || code != PF_Err_NONE || command.name != std::string("options")) {
            EXPECT_EQ(code, failed ? PF_Err_INTERNAL_STRUCT_DAMAGED : PF_Err_NONE);
        }
        EXPECT_EQ(session.host.accounts.complaints(), "");
        EXPECT_EQ(NamesIn(session.folder.path()), std::vector<std::string>{MODULE_FILE});
        if (!failed || testing::Test::HasFailure()) return nth - 1;
    }
}

TEST(Allocations, FailAsAStandardException) {
    std::set<std::string> allocating;
    for (const ModuleCommand& command : everyCommand) {
        const int failures = FailEachAllocation(command, false) + FailEachAllocation(command, true);
        std::printf("%5d failures of %s\n", failures, command.name);
        if (failures > 0) allocating.insert(command.name);
    }
    EXPECT_EQ(allocating, (std::set<std::string>{"options", "parameter set-up"}));
}

}  // namespace
