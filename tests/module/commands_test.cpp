// The commands that belong to no frame: set-up, about, sequence data, and those that the module
// does not know.
#include <array>
#include <cstdlib>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

PF_OutData NoisyOut() {
    PF_OutData out;
    std::memset(&out, 0x5A, sizeof out);
    return out;
}

bool SameOut(const PF_OutData& a, const PF_OutData& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(EntryPoint, UnknownCommandsDoNothing) {
    const Session session;
    std::vector<PF_Cmd> unknown{2,  3,  10, 12, 15, 16, 17, 18,   19,
                                20, 21, 22, 25, 26, 27, 29, 1000, -1};
    if (!ForMultiFrame()) unknown.push_back(28);
    for (const PF_Cmd cmd : unknown) {
        EXPECT_EQ(session.module.entryPoint()(cmd, nullptr, nullptr, nullptr, nullptr, nullptr), 0)
            << cmd;
    }
}

TEST(EntryPoint, EveryCommandNeedsTheBasicSuite) {
    Session session;
    Instance instance(session.effect), bare(session.effect);
    ASSERT_TRUE(instance.sequenceSetup().ok());
    Picture image(PF_PixelFormat_ARGB32);
    Frame frame(instance, image);
    session.host.givesBasicSuite = false;
    session.host.blankOut = NoisyOut();
    session.host.calls.resetCount();
    std::vector<std::byte> flat;
    if (ForMultiFrame()) {
        EXPECT_EQ(instance.flattenedCopy(flat).error, PF_Err_BAD_CALLBACK_PARAM);
    }
    for (const CommandResult& result :
         {session.effect.about(), session.effect.globalSetup(), session.effect.paramsSetup(),
          instance.sequenceFlatten(flat), instance.sequenceSetdown(), instance.updateParamsUi(),
          instance.doDialog(), instance.render(image, image), frame.preRender(),
          frame.render(image)}) {
        EXPECT_EQ(result.error, PF_Err_BAD_CALLBACK_PARAM);
        EXPECT_TRUE(SameOut(result.out, NoisyOut()));
    }
    EXPECT_TRUE(bare.sequenceSetdown().ok()) << "nothing to set down";
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

using Record = std::array<unsigned char, 4>;

constexpr Record fresh{1, 0, 0, 0};

Record RecordIn(const Session& session, PF_Handle handle) {
    Record record{};
    const auto bytes = session.host.handles.bytes(handle);
    EXPECT_EQ(bytes.size(), record.size());
    if (bytes.size() == record.size()) std::memcpy(record.data(), bytes.data(), record.size());
    return record;
}

TEST(SequenceData, IsMadeFromTheStoredRecordIfThatIsTheModules) {
    Session session;
    Instance instance(session.effect);
    EXPECT_TRUE(instance.sequenceResetup(std::nullopt).ok());
    EXPECT_EQ(RecordIn(session, instance.sequenceData()), fresh);
    const std::pair<std::vector<unsigned char>, Record> cases[] = {
        {{1, 7, 8, 9}, {1, 7, 8, 9}},
        {{0, 7, 8, 9}, fresh},
        {{2, 7, 8, 9}, fresh},
        {{1}, fresh},
        {{1, 7, 8}, fresh}};  // the last two of a damaged project
    for (const auto& [stored, expected] : cases) {
        EXPECT_TRUE(instance.sequenceResetup(std::as_bytes(std::span(stored))).ok());
        EXPECT_EQ(RecordIn(session, instance.sequenceData()), expected);
    }
}

TEST(SequenceData, IsFlattenedIntoACopy) {
    for (const bool rewrites : {true, false}) {
        const auto flatten = rewrites ? &Instance::sequenceFlatten : &Instance::flattenedCopy;
        for (const bool renderEngine : {false, true}) {
            if (!rewrites && !ForMultiFrame()) continue;
            Session session({}, HostNamed(PF_AppID_AfterEffects, {13, 0}, renderEngine));
            Instance instance(session.effect);
            std::vector<std::byte> flat;
            EXPECT_EQ((instance.*flatten)(flat).error, PF_Err_INTERNAL_STRUCT_DAMAGED)
                << "there is none yet";
            EXPECT_TRUE(instance.sequenceSetdown().ok());
            EXPECT_TRUE(instance.sequenceSetup().ok());
            EXPECT_EQ(RecordIn(session, instance.sequenceData()), fresh);
            session.host.handles.bytes(instance.sequenceData())[2] = std::byte{9};
            EXPECT_TRUE((instance.*flatten)(flat).ok());
            // A render engine keeps the record as it came.
            const Record found{1, 0, 9, 0};
            EXPECT_EQ(RecordIn(session, instance.sequenceData()),
                      renderEngine || !rewrites ? found : fresh);
            const auto expected = std::as_bytes(std::span(renderEngine ? found : fresh));
            EXPECT_TRUE(std::equal(flat.begin(), flat.end(), expected.begin(), expected.end()));
        }
    }
}

}  // namespace
