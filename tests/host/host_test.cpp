// The suite handler, and the guard around every command.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/entry_point.h"
#include "host/suite_handler.h"

namespace {

/// A host that has the world suites and no other, and writes down what is acquired (+) and released (-).
class HostOfWorlds : public testing::Test {
  protected:
    HostOfWorlds() {
        calls.clear();
        onAcquire = [] {};
    }

    static A_long acquire(const char* name, A_long version, const void** suite) {
        onAcquire();
        record('+', name, version);
        *suite = name == std::string(kPFWorldSuite) ? &calls : nullptr;
        return 0;
    }
    static A_long release(const char* name, A_long version) {
        record('-', name, version);
        return 0;
    }

    static void record(char what, const char* name, A_long version) {
        calls.push_back((what + std::string(name)).append(std::to_string(version)));
    }

    static inline std::vector<std::string> calls;
    static inline std::function<void()> onAcquire;
    SPBasicSuite basic_{acquire, release, {}};
};

TEST_F(HostOfWorlds, LendsEachVersionOnceAndHasItBackAfterAnError) {
    try {
        SuiteHandler suites(&basic_);
        for (int i = 0; i < 2; ++i) {
            static_cast<void>(suites.get<PF_WorldSuite1>());
            static_cast<void>(suites.get<PF_WorldSuite2>());
        }
        static_cast<void>(suites.get<PF_HandleSuite1>());
        FAIL() << "the handle suite is missing";
    } catch (PF_Err code) {
        EXPECT_EQ(code, PF_Err_BAD_CALLBACK_PARAM);
    }
    std::sort(calls.begin(), calls.end());
    EXPECT_EQ(calls, (std::vector<std::string>{"+PF Handle Suite2", "+PF World Suite1", "+PF World Suite2",
                                               "-PF World Suite1", "-PF World Suite2"}));
}

TEST_F(HostOfWorlds, GetsACodeForWhateverIsThrown) {
    PF_InData in{};
    PF_OutData out{};
    in.pica_basicP = &basic_;
    const auto about = [&] { return EntryPointFunc(PF_Cmd_ABOUT, &in, &out, nullptr, nullptr, nullptr); };
    onAcquire = [] { throw PF_Err{1234}; };
    EXPECT_EQ(about(), 1234);
    onAcquire = [] { throw std::length_error("a string too long"); };
    EXPECT_EQ(about(), PF_Err_INTERNAL_STRUCT_DAMAGED);
}

}  // namespace
