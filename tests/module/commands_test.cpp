// The commands that belong to no frame: set-up, about, sequence data, and those that the module
// does not know.
#include <cstdlib>
#include <set>
#include <span>
#include <string>

#include "tests/module/every_command.h"

using namespace host_kit;
using namespace std::string_literals;

namespace {

bool SameOut(const PF_OutData& a, const PF_OutData& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(EntryPoint, UnknownCommandsDoNothing) {
    const Session session;
    const std::set<PF_Cmd> known{0, 1, 4, 5, 6, 7, 8, 9, 11, 13, 14, 23, 24};
    for (PF_Cmd cmd = -1; cmd < 1000; ++cmd) {
        if (known.contains(cmd) || (cmd == 28 && ForMultiFrame())) continue;
        EXPECT_EQ(session.module.entryPoint()(cmd, nullptr, nullptr, nullptr, nullptr, nullptr), 0)
            << cmd;
    }
}

TEST(EntryPoint, EveryCommandNeedsTheBasicSuite) {
    Session session;
    Stage stage(session);
    Frame frame(stage.instance, stage.input);
    EXPECT_TRUE(frame.preRender().ok());
    session.host.blankOut = NoisyOut();
    session.host.calls.resetCount();
    const auto expectRefusal = [&](const CommandResult& result, const char* name) {
        EXPECT_EQ(result.error, PF_Err_BAD_CALLBACK_PARAM) << name;
        EXPECT_TRUE(SameOut(result.out, NoisyOut())) << name;
    };
    session.host.givesBasicSuite = false;
    for (const ModuleCommand& command : everyCommand) {
        if (command.run != FlattenedCopy || ForMultiFrame())
            expectRefusal(command.run(stage), command.name);
    }
    expectRefusal(frame.render(stage.output), "the second half of a smart render");
    EXPECT_TRUE(Instance(session.effect).sequenceSetdown().ok()) << "nothing to set down";
    EXPECT_EQ(session.host.calls.count(), 0);
    session.host.givesBasicSuite = true;
}

/// More often than a process has thread-local indices, of which a runtime library takes one for
/// what is thrown.
TEST(Module, TakesNothingFromItsProcess) {
    Host host;
    host.givesBasicSuite = false;
    for (int round = 0; round < 2000; ++round) {
        const Module module(ModuleFile());
        ASSERT_EQ(Effect(host, module.entryPoint()).globalSetup().error, PF_Err_BAD_CALLBACK_PARAM)
            << round;
    }
}

TEST(GlobalSetup, TellsVersionAndFlagsAndNothingElse) {
    Session session;
    session.host.blankOut = NoisyOut();
    session.host.calls.resetCount();
    PF_OutData expected = NoisyOut();
    expected.my_version = 0x84601;
    expected.out_flags = 0x6000030;
    expected.out_flags2 = ForMultiFrame() ? 0x8801418 : 0x1418;
    EXPECT_TRUE(SameOut(session.effect.globalSetup().out, expected));
    EXPECT_EQ(session.host.calls.count(), 0);
}

TEST(About, TellsNameVersionAndCopyright) {
    Session session;
    EXPECT_STREQ(session.effect.about().out.return_msg,
                 "nevrel 1.0.8\r\rCopyright (c) 2026 The nevrel authors");
#ifndef _WIN32
    setenv("NEVREL_SHIFT", "1", 1);
    EXPECT_STREQ(session.effect.about().out.return_msg,
                 "nevrel 1.0.8 Release (build:1)\r\rCopyright (c) 2026 The nevrel authors");
    unsetenv("NEVREL_SHIFT");
#endif
}

std::string Text(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string RecordOf(const Instance& instance) {
    return Text(instance.effect().host().handles.bytes(instance.sequenceData()));
}

const std::string fresh = "\1\0\0\0"s;

TEST(SequenceData, IsMadeFromTheStoredRecordIfThatIsTheModules) {
    const Session session;
    Instance instance(session.effect);
    EXPECT_TRUE(instance.sequenceResetup(std::nullopt).ok());
    EXPECT_EQ(RecordOf(instance), fresh);
    for (const std::string& stored : {"\1\7\7\7"s, "\0\7\7\7"s, "\2\7\7\7"s, "\1"s, "\1\7\7"s}) {
        EXPECT_TRUE(instance.sequenceResetup(std::as_bytes(std::span(stored))).ok());
        EXPECT_EQ(RecordOf(instance), stored == "\1\7\7\7" ? stored : fresh);
    }
}

TEST(SequenceData, IsFlattenedIntoACopy) {
    for (const auto flatten : {&Instance::sequenceFlatten, &Instance::flattenedCopy}) {
        const bool rewrites = flatten == &Instance::sequenceFlatten;
        if (!rewrites && !ForMultiFrame()) continue;
        for (const bool renderEngine : {false, true}) {  // which keeps the record as it came
            const Session session({}, HostIdentity{PF_AppID_AfterEffects, {13, 0}, renderEngine});
            Instance instance(session.effect);
            std::vector<std::byte> flat;
            EXPECT_EQ((instance.*flatten)(flat).error, PF_Err_INTERNAL_STRUCT_DAMAGED)
                << "there is none yet";
            EXPECT_TRUE(instance.sequenceSetup().ok());
            EXPECT_EQ(RecordOf(instance), fresh);
            session.host.handles.bytes(instance.sequenceData())[2] = std::byte{7};
            EXPECT_TRUE((instance.*flatten)(flat).ok());
            const std::string found = "\1\0\7\0"s;
            EXPECT_EQ(RecordOf(instance), renderEngine || !rewrites ? found : fresh);
            EXPECT_EQ(Text(flat), renderEngine ? found : fresh);
        }
    }
}

}  // namespace
