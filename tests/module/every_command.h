// Every command of the module, for the tests that walk all of them.
#pragma once

#include "tests/module/session.h"

/// An out-record in which a write shows; its sequence data would be taken for a handle.
inline PF_OutData NoisyOut() {
    PF_OutData out;
    std::memset(&out, 0x5A, sizeof out);
    out.sequence_data = nullptr;
    return out;
}

enum class KeyMode { Off, On, Inverted };

/// What commands work on.
struct Stage {
    explicit Stage(Session& theSession, PF_PixelFormat format = PF_PixelFormat_ARGB32,
                   KeyMode key = KeyMode::Off)
        : session(theSession), input(format), output(format, true) {
        // Otherwise it would be a copy of the input from the start.
        std::memset(output.row<char>(0), 0x11,
                    static_cast<std::size_t>(output.width() * host_kit::PixelBytes(format)));
        instance.setCheckbox(idKeyEnable, key != KeyMode::Off);
        instance.setCheckbox(idKeyInvert, key == KeyMode::Inverted);
        EXPECT_TRUE(instance.sequenceSetup().ok());
    }

    Session& session;
    host_kit::Instance instance{session.effect};
    host_kit::Instance bare{session.effect};  // without sequence data
    Picture input;
    Picture output;
    std::vector<std::byte> record = std::vector<std::byte>(4, std::byte{1});
};

inline host_kit::CommandResult PreRenderAndRender(Stage& stage) {
    host_kit::Frame frame(stage.instance, stage.input);
    host_kit::CommandResult result = frame.preRender();
    if (result.ok()) result = frame.render(stage.output);
    // What follows is the host's deletion of the frame's data.
    stage.session.host.calls.record(false);
    return result;
}

inline host_kit::CommandResult Resetup(Stage& stage) {
    return stage.bare.sequenceResetup(stage.record);
}

inline host_kit::CommandResult FlattenedCopy(Stage& stage) {
    return stage.instance.flattenedCopy(stage.record);
}

inline constexpr PF_PixelFormat everyDepth[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                                PF_PixelFormat_ARGB128};

struct ModuleCommand {
    const char* name;
    host_kit::CommandResult (*run)(Stage&);
    std::size_t depths = 1;  ///< of every depth, at so many it is worth trying
};

/// In an order in which one stage can take them.
inline const ModuleCommand everyCommand[] = {
    {"about", [](Stage& s) { return s.session.effect.about(); }},
    {"global set-up", [](Stage& s) { return host_kit::Effect(s.session.effect).globalSetup(); }},
    {"parameter set-up", [](Stage& s) { return host_kit::Effect(s.session.effect).paramsSetup(); }},
    {"sequence set-up", [](Stage& s) { return s.bare.sequenceSetup(); }},
    {"re-set-up", Resetup},
    {"flatten", [](Stage& s) { return s.instance.sequenceFlatten(s.record); }},
    {"flattened copy", FlattenedCopy},
#ifndef _WIN32  // where a dialog opens and waits
    {"options", [](Stage& s) { return s.instance.doDialog(); }},
#endif
    {"UI update", [](Stage& s) { return s.instance.updateParamsUi(); }},
    {"changed parameter", [](Stage& s) { return s.instance.userChangedParam(); }},
    {"render", [](Stage& s) { return s.instance.render(s.input, s.output); }, 2},
    {"smart render", PreRenderAndRender, 3},
    {"set-down", [](Stage& s) { return s.instance.sequenceSetdown(); }},
};
