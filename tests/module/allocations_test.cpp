// Every memory allocation inside the module fails, once and from there on: each command answers
// with a code, and everything borrowed is back.
#include <dlfcn.h>

#include "tests/module/allocation_faults.h"
#include "tests/module/session.h"
#include "windows_stand_in/dialog_shower.h"

using namespace host_kit;

namespace {

struct EscapingUser : DialogShower {
    UserAction nextAction(const Window& /*dialog*/) override { return {UserActionKind::Escape}; }
};

/// What is thrown below the dialog manager ends the dialog, of which nothing is kept then.
CommandResult ShowOptions(Session& session, Instance& instance) {
    EscapingUser user;
    Window mainWindow{.shower = &user};
    session.host.identity.mainWindow = &mainWindow;
    const CommandResult result = instance.doDialog();
    std::filesystem::path ini = session.module.path();
    EXPECT_FALSE(std::filesystem::exists(ini.replace_extension("ini")));
    return result;
}

struct Case {
    const char* name;
    CommandResult (*run)(Session&, Instance&);
    bool allocates;
    bool hearsOfAll = true;
};

constexpr Case cases[] = {
    {"parameter set-up", [](Session& s, Instance&) { return Effect(s.effect).paramsSetup(); },
     true},
    {"options", ShowOptions, true, false},
    {"about", [](Session& s, Instance&) { return s.effect.about(); }, false},
    {"sequence set-up", [](Session&, Instance& i) { return i.sequenceSetup(); }, false},
    {"UI update", [](Session&, Instance& i) { return i.updateParamsUi(); }, false},
    {"smart render",
     [](Session&, Instance& i) {
         Picture input(PF_PixelFormat_ARGB32), output(PF_PixelFormat_ARGB32);
         return SmartRender(i, input, output);
     },
     false},
};

/// The module stays loaded: its runtime library never gives back the memory that it keeps for
/// exceptions.
AllocationFaults& FaultsOf(const Module& module) {
    void* library = dlopen(module.path().c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    auto* faults = static_cast<AllocationFaults*>(dlsym(library, allocationFaultsName));
    dlclose(library);
    return *faults;
}

/// Fails each allocation of the command in turn; returns their number.
int FailEachAllocation(const Case& c, bool fromThereOn) {
    Session session;
    AllocationFaults& faults = FaultsOf(session.module);
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(std::string(c.name) + ", allocation " + std::to_string(nth));
        Instance instance(session.effect);
        faults = {.nth = nth, .fromThereOn = fromThereOn};
        const PF_Err code = c.run(session, instance).error;
        const bool failed = faults.count >= nth;
        faults = {};
        if (!failed || c.hearsOfAll || code != PF_Err_NONE) {
            EXPECT_EQ(code, failed ? PF_Err_INTERNAL_STRUCT_DAMAGED : PF_Err_NONE);
        }
        EXPECT_EQ(session.host.accounts.complaints(), "");
        if (!failed || testing::Test::HasFailure()) return nth - 1;
    }
}

TEST(Allocations, FailAsAStandardException) {
    for (const Case& c : cases) {
        const int failures = FailEachAllocation(c, false) + FailEachAllocation(c, true);
        std::printf("%5d failures of %s\n", failures, c.name);
        EXPECT_EQ(failures > 0, c.allocates) << c.name;
    }
}

}  // namespace
