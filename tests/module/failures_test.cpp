// Every host call of every command fails, in every way that it can, once and from there on: each
// command answers with the right code and out-record, everything borrowed is back, no picture is
// half rendered, and the next frame is as ever.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

constexpr PF_Err faultCode = 1234;
constexpr int fewestFailures = 2000;

enum class KeyMode { Off, On, Inverted };

/// The pictures and the instances that a command works on.
struct Stage {
    Stage(Session& theSession, PF_PixelFormat format, KeyMode key)
        : session(theSession), input(format), output(format, true) {
        std::memset(output.row<char>(0), 0x11,
                    static_cast<std::size_t>(output.width() * PixelBytes(format)));
        instance.setCheckbox(idKeyEnable, key != KeyMode::Off);
        instance.setCheckbox(idKeyInvert, key == KeyMode::Inverted);
        EXPECT_TRUE(instance.sequenceSetup().ok());
    }

    Session& session;
    Instance instance{session.effect};
    Instance bare{session.effect};  // without sequence data
    Picture input;
    Picture output;
    std::vector<std::byte> bytes = std::vector<std::byte>(4, std::byte{1});
};

CommandResult PreRenderAndRender(Stage& stage) {
    Frame frame(stage.instance, stage.input);
    CommandResult result = frame.preRender();
    if (result.ok()) result = frame.render(stage.output);
    stage.session.host.calls.record(
        false);  // what follows is the host's deletion of the frame's data
    return result;
}

const std::vector<PF_PixelFormat> k8Bit{PF_PixelFormat_ARGB32};
const std::vector<KeyMode> noKey{KeyMode::Off};

CommandResult Resetup(Stage& stage) { return stage.bare.sequenceResetup(stage.bytes); }

/// A command, and with which pictures and keys it is tried.
struct Case {
    const char* name;
    CommandResult (*run)(Stage&);
    std::vector<PF_PixelFormat> formats = k8Bit;
    std::vector<KeyMode> keys = noKey;
    HostIdentity identity{};
};

const std::vector<KeyMode> everyKey{KeyMode::Off, KeyMode::On, KeyMode::Inverted};
const HostIdentity renderEngine = HostNamed(PF_AppID_AfterEffects, {13, 0}, true);

constexpr char flattenedCopy[] = "flattened copy";

const Case cases[] = {
    {"about", [](Stage& s) { return s.session.effect.about(); }},
    {"parameter set-up", [](Stage& s) { return Effect(s.session.effect).paramsSetup(); }},
    {"sequence set-up", [](Stage& s) { return s.bare.sequenceSetup(); }},
    {"re-set-up", Resetup},
    {"flatten", [](Stage& s) { return s.instance.sequenceFlatten(s.bytes); }},
    {flattenedCopy, [](Stage& s) { return s.instance.flattenedCopy(s.bytes); }},
    {"set-down", [](Stage& s) { return s.instance.sequenceSetdown(); }},
    {"UI update", [](Stage& s) { return s.instance.updateParamsUi(); }},
    {"UI update in a render engine", [](Stage& s) { return s.instance.userChangedParam(); }, k8Bit,
     noKey, renderEngine},
#ifndef _WIN32  // where a dialog opens and waits
    {"options", [](Stage& s) { return s.instance.doDialog(); }},
#endif
    {"render",
     [](Stage& s) { return s.instance.render(s.input, s.output); },
     {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64},
     everyKey},
    {"Premiere render", [](Stage& s) { return s.instance.render(s.input, s.output); }, k8Bit, noKey,
     HostNamed(PF_AppID_Premiere, {13, 0})},
    {"smart render",
     PreRenderAndRender,
     {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128},
     everyKey},
};

/// What a command has to answer when the call fails.
PF_Err ExpectedCode(HostCall call, FaultShape shape, bool smart, PF_PixelFormat format) {
    const bool null = shape == FaultShape::Null;
    const auto unlessOfOtherDepth = [&](PF_PixelFormat depth) {
        return depth == format ? PF_Err_UNRECOGNIZED_PARAM_TYPE : PF_Err_NONE;
    };
    switch (call) {
        case HostCall::AcquireSuite:
            return PF_Err_BAD_CALLBACK_PARAM;
        case HostCall::NewHandle:
            return PF_Err_OUT_OF_MEMORY;
        case HostCall::LockHandle:
            return smart ? PF_Err_NONE : PF_Err_INTERNAL_STRUCT_DAMAGED;
        case HostCall::NewWorld:
            return null ? PF_Err_OUT_OF_MEMORY : faultCode;
        case HostCall::GetPixelData8:
            return null ? unlessOfOtherDepth(PF_PixelFormat_ARGB32) : faultCode;
        case HostCall::GetPixelData16:
            return null ? unlessOfOtherDepth(PF_PixelFormat_ARGB64) : faultCode;
        case HostCall::CheckoutLayerPixels:
        case HostCall::CheckoutOutput:
            return null ? PF_Err_BAD_CALLBACK_PARAM : faultCode;
        case HostCall::AddParam:
        case HostCall::CheckoutParam:
        case HostCall::CopyWorld:
        case HostCall::CheckoutLayer:
        case HostCall::CheckinLayerPixels:
        case HostCall::GetPixelFormat:
            return faultCode;
        default:
            return PF_Err_NONE;
    }
}

using Calls = std::vector<HostCallRecord>;

/// One case with one layout, depth and key mode.
class Trial {
  public:
    Trial(const Case& theCase, Session& session, PF_PixelFormat format, KeyMode key)
        : case_(theCase),
          session_(session),
          format_(format),
          key_(key),
          smoothed_(render(70)),
          copied_(render(0)) {}

    /// Fails the nth call, for every n that there is. Returns the number of runs in which a call
    /// failed.
    int failEachCall(FaultShape shape, bool fromThereOn) {
        int failures = 0;
        std::size_t calls = 0;
        int nth = 0;
        do {
            ++nth;
            SCOPED_TRACE(std::string(case_.name) + ", call " + std::to_string(nth));
            calls = fail({.call = {},
                          .nth = nth,
                          .shape = shape,
                          .code = faultCode,
                          .fromThereOn = fromThereOn});
            failures += session_.host.calls.faultsFired() > 0 ? 1 : 0;
            EXPECT_EQ(render(70), smoothed_) << "the next frame";
        } while (static_cast<std::size_t>(nth) <= calls);
        return failures;
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
        const CommandResult result = case_.run(stage);
        calls.clearFault();
        const Calls recorded = calls.recorded();

        const std::size_t decisive = decisiveCall(recorded, fault);
        EXPECT_EQ(result.error, codeOf(recorded, decisive, fault));
        EXPECT_EQ(session_.host.accounts.complaints(), "");
        if (!result.ok()) expectOutRecord(result.out, recorded, decisive);
        const std::vector<char> pixels = stage.output.pixels();
        EXPECT_TRUE(pixels == untouched || pixels == smoothed_ || pixels == copied_)
            << "half a picture";
        return recorded.size();
    }

    [[nodiscard]] PF_Err codeOf(const Calls& calls, std::size_t index, const Fault& fault) const {
        if (index >= calls.size() || !CanFail(calls[index].call, fault.shape)) return PF_Err_NONE;
        return ExpectedCode(calls[index].call, fault.shape, case_.run == PreRenderAndRender,
                            format_);
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
        EXPECT_EQ(out.sequence_data != nullptr, remade && case_.run == Resetup);

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

    const Case& case_;
    Session& session_;
    PF_PixelFormat format_;
    KeyMode key_;
    std::vector<char> smoothed_;
    std::vector<char> copied_;
};

int FailEveryCall(const Case& c, const std::string& layout) {
    Session session(layout, c.identity);
    std::memset(&session.host.blankOut, 0x5A, sizeof session.host.blankOut);
    session.host.blankOut.sequence_data = nullptr;
    int failures = 0;
    for (const PF_PixelFormat format : c.formats) {
        for (const KeyMode key : c.keys) {
            Trial trial(c, session, format, key);
            for (const FaultShape shape : {FaultShape::Error, FaultShape::Null}) {
                for (const bool fromThereOn : {false, true})
                    failures += trial.failEachCall(shape, fromThereOn);
            }
        }
    }
    return failures;
}

TEST(Failures, GiveTheRightCodeAndLeaveNothingBorrowed) {
    int total = 0;
    for (const Case& c : cases) {
        const int failures = FailEveryCall(c, "") + FailEveryCall(c, flatLayout);
        std::printf("%5d failures of %s\n", failures, c.name);
        EXPECT_EQ(failures > 0, c.name != flattenedCopy || ForMultiFrame()) << c.name;
        total += failures;
    }
    std::printf("%5d failures in all\n", total);
    EXPECT_GE(total, fewestFailures);
}

TEST(Failures, DeletionWithoutTheHandleSuiteIsSilent) {
    Session session;
    Stage stage(session, PF_PixelFormat_ARGB32, KeyMode::Off);
    Frame frame(stage.instance, stage.input);
    ASSERT_TRUE(frame.preRender().ok());
    session.host.calls.inject({.call = HostCall::AcquireSuite});
    frame.deletePreRenderData();
    EXPECT_EQ(session.host.calls.faultsFired(), 1);
    session.host.calls.clearFault();
}

}  // namespace
