// Every host call of every command fails, in every way that it can, once and from there on: each
// command answers with the right code and out-record, everything borrowed is back, no picture is
// half rendered, and the next frame is as ever.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>

#include "tests/module/every_command.h"

using namespace host_kit;

namespace {

constexpr PF_Err faultCode = 1234;

const HostIdentity hosts[] = {{PF_AppID_AfterEffects, {13, 0}},
                              {PF_AppID_AfterEffects, {13, 0}, true},
                              {PF_AppID_Premiere, {13, 0}}};

/// What a command has to answer when a call reports an error, and when the call gives null. The
/// other calls may fail in silence.
const std::map<HostCall, std::pair<PF_Err, PF_Err>> answers{
    {HostCall::AcquireSuite, {PF_Err_BAD_CALLBACK_PARAM, PF_Err_BAD_CALLBACK_PARAM}},
    {HostCall::NewHandle, {PF_Err_OUT_OF_MEMORY, PF_Err_OUT_OF_MEMORY}},
    {HostCall::LockHandle, {PF_Err_INTERNAL_STRUCT_DAMAGED, PF_Err_INTERNAL_STRUCT_DAMAGED}},
    {HostCall::NewWorld, {faultCode, PF_Err_OUT_OF_MEMORY}},
    {HostCall::GetPixelData8, {faultCode, PF_Err_UNRECOGNIZED_PARAM_TYPE}},
    {HostCall::GetPixelData16, {faultCode, PF_Err_UNRECOGNIZED_PARAM_TYPE}},
    {HostCall::CheckoutLayerPixels, {faultCode, PF_Err_BAD_CALLBACK_PARAM}},
    {HostCall::CheckoutOutput, {faultCode, PF_Err_BAD_CALLBACK_PARAM}},
    {HostCall::AddParam, {faultCode, PF_Err_NONE}},
    {HostCall::CheckoutParam, {faultCode, PF_Err_NONE}},
    {HostCall::CopyWorld, {faultCode, PF_Err_NONE}},
    {HostCall::CheckoutLayer, {faultCode, PF_Err_NONE}},
    {HostCall::CheckinLayerPixels, {faultCode, PF_Err_NONE}},
    {HostCall::GetPixelFormat, {faultCode, PF_Err_NONE}},
};

using Calls = std::vector<HostCallRecord>;

/// One command with one layout, depth and key mode.
class Trial {
  public:
    Trial(const ModuleCommand& command, Session& session, PF_PixelFormat format, KeyMode key)
        : command_(command),
          session_(session),
          format_(format),
          key_(key),
          smoothed_(render(70)),
          copied_(render(0)) {}

    /// Fails the nth call, for every n that there is. Returns the number of runs in which a call
    /// failed.
    int failEachCall(FaultShape shape, bool fromThereOn) {
        int failures = 0;
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(std::string(command_.name) + ", call " + std::to_string(nth));
            const std::size_t calls = fail({{}, nth, shape, faultCode, fromThereOn});
            failures += session_.host.calls.faultsFired() > 0 ? 1 : 0;
            EXPECT_EQ(render(70), smoothed_) << "the next frame";
            if (static_cast<std::size_t>(nth) > calls) return failures;
        }
    }

  private:
    /// A smart render that nothing disturbs.
    std::vector<char> render(A_long softness) {
        Stage stage(session_, format_, key_);
        stage.instance.setSlider(idSoftness, softness);
        EXPECT_TRUE(PreRenderAndRender(stage).ok());
        return stage.output.pixels();
    }

    /// Runs the command with the fault; returns the number of its calls.
    std::size_t fail(const Fault& fault) {
        CallMonitor& calls = session_.host.calls;
        Stage stage(session_, format_, key_);
        const std::vector<char> untouched = stage.output.pixels();
        calls.record(true);
        calls.inject(fault);
        const CommandResult result = command_.run(stage);
        calls.clearFault();
        const Calls recorded = calls.recorded();

        const std::size_t decisive = decisiveCall(recorded, fault);
        EXPECT_EQ(result.error, codeOf(recorded, decisive, fault));
        EXPECT_EQ(session_.host.accounts.complaints(), "");
        if (!result.ok()) expectOutRecord(result.out, recorded, decisive);
        const std::vector<char> pixels = stage.output.pixels();
        EXPECT_TRUE(pixels == untouched || pixels == smoothed_ || pixels == copied_ ||
                    pixels == stage.input.pixels())  // as the editor has it, with a key too
            << "half a picture";
        return recorded.size();
    }

    [[nodiscard]] PF_Err codeOf(const Calls& calls, std::size_t index, const Fault& fault) const {
        if (index >= calls.size() || !CanFail(calls[index].call, fault.shape)) return PF_Err_NONE;
        const HostCall call = calls[index].call;
        if (call == HostCall::LockHandle && command_.run == PreRenderAndRender) return PF_Err_NONE;
        const auto answer = answers.find(call);
        if (answer == answers.end()) return PF_Err_NONE;
        if (fault.shape == FaultShape::Error) return answer->second.first;
        const bool otherDepth =
            (call == HostCall::GetPixelData8 && format_ != PF_PixelFormat_ARGB32) ||
            (call == HostCall::GetPixelData16 && format_ != PF_PixelFormat_ARGB64);
        return otherDepth ? PF_Err_NONE : answer->second.second;
    }

    /// The first failed call whose failure the command has to answer with; past the end when there
    /// is none.
    [[nodiscard]] std::size_t decisiveCall(const Calls& calls, const Fault& fault) const {
        const auto nth = static_cast<std::size_t>(fault.nth);
        for (std::size_t i = nth - 1; i < (fault.fromThereOn ? calls.size() : nth); ++i) {
            if (codeOf(calls, i, fault) != PF_Err_NONE) return i;
        }
        return calls.size();
    }

    /// A failed command leaves its out-record alone, but for the message about a missing suite and
    /// for the record that a re-set-up had made by then.
    void expectOutRecord(const PF_OutData& out, const Calls& calls, std::size_t decisive) const {
        const auto isLock = [](const HostCallRecord& call) {
            return call.call == HostCall::LockHandle;
        };
        const bool remade =
            std::count_if(calls.begin(), calls.end(), isLock) > 1 && isLock(calls.at(decisive));
        EXPECT_EQ(out.sequence_data != nullptr, remade && command_.run == Resetup);

        PF_OutData expected = session_.host.blankOut;
        expected.sequence_data = out.sequence_data;
        const HostCallRecord& call = calls.at(decisive);
        if (call.call == HostCall::AcquireSuite && call.name == kPFWorldSuite &&
            call.number == kPFWorldSuiteVersion2) {
            expected.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
            std::strcpy(expected.return_msg, "Couldn't load suite.");
        }
        EXPECT_EQ(std::memcmp(&out, &expected, sizeof out), 0) << "the out-record";
    }

    const ModuleCommand& command_;
    Session& session_;
    PF_PixelFormat format_;
    KeyMode key_;
    std::vector<char> smoothed_;
    std::vector<char> copied_;
};

int FailEveryCall(const ModuleCommand& command, const HostIdentity& host,
                  const std::string& layout) {
    Session session(layout, host);
    session.host.blankOut = NoisyOut();
    int failures = 0;
    for (const PF_PixelFormat depth : std::span(everyDepth).first(command.depths)) {
        for (const KeyMode key : {KeyMode::Off, KeyMode::On, KeyMode::Inverted}) {
            if (command.depths == 1 && key != KeyMode::Off) continue;
            Trial trial(command, session, depth, key);
            for (const FaultShape shape : {FaultShape::Error, FaultShape::Null})
                for (const bool fromThereOn : {false, true})
                    failures += trial.failEachCall(shape, fromThereOn);
        }
    }
    return failures;
}

TEST(Failures, GiveTheRightCodeAndLeaveNothingBorrowed) {
    int total = 0;
    std::vector<std::string> callless{"global set-up"};
    if (!ForMultiFrame()) callless.emplace_back("flattened copy");
    std::vector<std::string> withoutFailures;
    for (const ModuleCommand& command : everyCommand) {
        int failures = 0;
        for (const HostIdentity& host : hosts) {
            if (command.run == PreRenderAndRender && &host != hosts) continue;  // all the same
            failures += FailEveryCall(command, host, "") + FailEveryCall(command, host, flatLayout);
        }
        std::printf("%5d failures of %s\n", failures, command.name);
        if (failures == 0) withoutFailures.emplace_back(command.name);
        total += failures;
    }
    std::printf("%5d failures in all\n", total);
    EXPECT_EQ(withoutFailures, callless);
    EXPECT_GE(total, 2000);
}

TEST(Failures, DeletionWithoutTheHandleSuiteIsSilent) {
    Session session;
    Stage stage(session);
    Frame frame(stage.instance, stage.input);
    ASSERT_TRUE(frame.preRender().ok());
    session.host.calls.inject({.call = HostCall::AcquireSuite});
    frame.deletePreRenderData();
    EXPECT_EQ(session.host.calls.faultsFired(), 1);
    session.host.calls.clearFault();
}

}  // namespace
