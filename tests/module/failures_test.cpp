// Every host call of every command fails once, in every shape that it can: each command answers with the
// right code and everything borrowed is back.
#include "tests/module/session.h"

using namespace standalone;

namespace {

constexpr PF_Err kFaultCode = 1234;

/// The images and the instances that a command works on.
struct Stage {
    explicit Stage(Session& theSession) : session(theSession) { EXPECT_TRUE(instance.sequenceSetup().ok()); }

    Session& session;
    Instance instance{session.effect};
    Instance bare{session.effect};  // without sequence data
    Picture input{PF_PixelFormat_ARGB32};
    Picture output{PF_PixelFormat_ARGB32};
    std::vector<std::byte> bytes = std::vector<std::byte>(4, std::byte{1});
};

CommandResult PreRenderAndRender(Stage& stage) {
    Frame frame(stage.instance, stage.input);
    CommandResult result = frame.preRender();
    if (result.ok()) result = frame.render(stage.output);
    stage.session.host.calls.record(false);  // what follows is the host's deletion of the frame's data
    return result;
}

struct Case {
    const char* name;
    CommandResult (*run)(Stage&);
    HostIdentity identity{};
};

const Case kCases[] = {
    {"about", [](Stage& s) { return s.session.effect.about(); }},
    {"parameter set-up", [](Stage& s) { return Effect(s.session.effect).paramsSetup(); }},
    {"sequence set-up", [](Stage& s) { return s.bare.sequenceSetup(); }},
    {"re-set-up", [](Stage& s) { return s.bare.sequenceResetup(s.bytes); }},
    {"flatten", [](Stage& s) { return s.instance.sequenceFlatten(s.bytes); }},
    {"set-down", [](Stage& s) { return s.instance.sequenceSetdown(); }},
    {"UI update", [](Stage& s) { return s.instance.updateParamsUi(); }},
    {"render", [](Stage& s) { return s.instance.render(s.input, s.output); }},
    {"Premiere render", [](Stage& s) { return s.instance.render(s.input, s.output); },
     HostNamed(PF_AppID_Premiere, {13, 0})},
    {"smart render", PreRenderAndRender},
};

/// What the command has to answer when the call fails.
PF_Err ExpectedCode(HostCall call, FaultShape shape, bool smart) {
    const bool null = shape == FaultShape::Null;
    switch (call) {
        case HostCall::AcquireSuite:
            return PF_Err_BAD_CALLBACK_PARAM;
        case HostCall::NewHandle:
            return PF_Err_OUT_OF_MEMORY;
        case HostCall::LockHandle:
            return smart ? PF_Err_NONE : PF_Err_INTERNAL_STRUCT_DAMAGED;
        case HostCall::NewWorld:
            return null ? PF_Err_OUT_OF_MEMORY : kFaultCode;
        case HostCall::GetPixelData8:
            return null ? PF_Err_UNRECOGNIZED_PARAM_TYPE : kFaultCode;
        case HostCall::GetPixelData16:  // of images that are 8-bit
            return null ? PF_Err_NONE : kFaultCode;
        case HostCall::CheckoutLayerPixels:
        case HostCall::CheckoutOutput:
            return null ? PF_Err_BAD_CALLBACK_PARAM : kFaultCode;
        case HostCall::AddParam:
        case HostCall::CopyWorld:
        case HostCall::CheckoutLayer:
        case HostCall::CheckinLayerPixels:
        case HostCall::GetPixelFormat:
            return kFaultCode;
        default:
            return PF_Err_NONE;
    }
}

/// Runs the command with its nth call (from 1) failing, then again without; gives the number of its calls.
std::size_t RunWithFault(const Case& c, Session& session, std::size_t nth, FaultShape shape) {
    SCOPED_TRACE(std::string(c.name) + ", call " + std::to_string(nth));
    CallMonitor& calls = session.host.calls;
    Stage stage(session);
    calls.record(true);
    calls.inject({.call = {}, .nth = static_cast<int>(nth), .shape = shape, .code = kFaultCode});
    const PF_Err code = c.run(stage).error;
    const bool failed = calls.faultsFired() == 1;
    calls.clearFault();
    const std::vector<HostCallRecord> recorded = calls.recorded();
    const bool smart = c.run == PreRenderAndRender;
    EXPECT_EQ(code, failed ? ExpectedCode(recorded.at(nth - 1).call, shape, smart) : PF_Err_NONE);
    EXPECT_EQ(session.host.accounts.complaints(), "");
    Stage next(session);
    EXPECT_EQ(c.run(next).error, PF_Err_NONE) << "the next one is clean";
    return recorded.size();
}

TEST(Failures, GiveTheRightCodeAndLeaveNothingBorrowed) {
    for (const Case& c : kCases) {
        Session session({}, c.identity);
        for (const FaultShape shape : {FaultShape::Error, FaultShape::Null}) {
            RunWithFault(c, session, 0, shape);  // the first one has to find the layout
            const std::size_t callCount = RunWithFault(c, session, 0, shape);
            EXPECT_GT(callCount, 1U) << c.name;
            for (std::size_t nth = 1; nth <= callCount; ++nth) RunWithFault(c, session, nth, shape);
        }
    }
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
