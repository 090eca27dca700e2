// What a host from 2022 on notices of an effect that promises to render several frames at once.
#include <gtest/gtest.h>

#include <string>

#include "host_kit/books/multi_frame_host.h"
#include "host_kit/instance.h"

namespace host_kit {
namespace {

constexpr A_long promise = PF_OutFlag2_SUPPORTS_THREADED_RENDERING;
constexpr A_long both = promise | PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA;

const PF_HandleSuite1& HandleSuite(PF_InData* in) {
    const void* suite = nullptr;
    in->pica_basicP->AcquireSuite(kPFHandleSuite, kPFHandleSuiteVersion1, &suite);
    in->pica_basicP->ReleaseSuite(kPFHandleSuite, kPFHandleSuiteVersion1);
    return *static_cast<const PF_HandleSuite1*>(suite);
}

// What an effect does with its own data.
void Nothing(PF_InData* in, PF_OutData* /*out*/) { HandleSuite(in); }
void Write(PF_InData* in, PF_OutData* /*out*/) { *static_cast<char*>(*in->sequence_data) += 1; }
void HandOut(PF_InData* in, PF_OutData* out) { out->sequence_data = in->sequence_data; }
void Lock(PF_InData* in, PF_OutData* /*out*/) {
    static std::mutex lock;
    const std::lock_guard held(lock);
    HandleSuite(in);
}

struct Misdeed {
    const char* complaint;  ///< empty for none
    PF_Cmd cmd;
    A_long flags2;
    void (*act)(PF_InData* in, PF_OutData* out);
};
constexpr Misdeed misdeeds[] = {
    {"promises no flattened copies", PF_Cmd_GLOBAL_SETUP, promise, Nothing},
    {"wrote to the data", PF_Cmd_RENDER, both, Write},
    {"replaced the data", PF_Cmd_RENDER, both, HandOut},
    {"held a lock", PF_Cmd_RENDER, both, Lock},
    {"wrote to the data", PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, both, Write},
    {"gave no copy", PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, both, HandOut},
    {"", PF_Cmd_RENDER, both, Nothing},
    {"", PF_Cmd_RENDER, 0, Write},
    {"", PF_Cmd_RENDER, 0, Lock},
};

const Misdeed* misdeed = nullptr;

PF_Err MisbehavingEffect(PF_Cmd cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* /*params*/[],
                         PF_LayerDef* /*output*/, void* /*extra*/) {
    if (cmd == PF_Cmd_GLOBAL_SETUP) {
        out->out_flags = PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING;
        out->out_flags2 = misdeed->flags2;
    } else if (cmd == PF_Cmd_PARAMS_SETUP) {
        out->num_params = 1;
    } else if (cmd == PF_Cmd_SEQUENCE_SETUP) {
        out->sequence_data = HandleSuite(in).host_new_handle(4);
    } else if (cmd == PF_Cmd_SEQUENCE_SETDOWN) {
        HandleSuite(in).host_dispose_handle(in->sequence_data);
    } else if (cmd == misdeed->cmd) {
        misdeed->act(in, out);
    }
    return PF_Err_NONE;
}

/// The code of the command at which the misdeed is committed.
PF_Err Commit(MultiFrameHost& host) {
    Effect effect(host, MisbehavingEffect);
    const PF_Err code = effect.globalSetup().error;
    if (misdeed->cmd == PF_Cmd_GLOBAL_SETUP) return code;
    effect.paramsSetup();
    Instance instance(effect);
    instance.sequenceSetup();
    World input(PF_PixelFormat_ARGB32, 6, 4);
    World output(PF_PixelFormat_ARGB32, 6, 4);
    host.meanwhile = [&] { instance.render(input, output); };
    std::vector<std::byte> flat;
    const PF_Err result = misdeed->cmd == PF_Cmd_RENDER ? instance.render(input, output).error
                                                        : instance.flattenedCopy(flat).error;
    host.meanwhile = nullptr;
    return result;
}

TEST(MultiFrameHostTest, HoldsAnEffectToItsPromise) {
    for (const Misdeed& entry : misdeeds) {
        misdeed = &entry;
        const std::string complaint = entry.complaint;
        for (const auto rules :
             {MultiFrameRules::Unknown, MultiFrameRules::Noted, MultiFrameRules::Enforced}) {
            SCOPED_TRACE(complaint);
            MultiFrameHost host;
            host.rules = rules;
            host.patience = std::chrono::milliseconds(entry.act == Lock ? 50 : 60'000);
            const PF_Err code = Commit(host);
            const bool enforced = rules == MultiFrameRules::Enforced;
            // Nobody else renders, who could be kept out, but where rules are enforced.
            const bool noted = !complaint.empty() && rules != MultiFrameRules::Unknown &&
                               (entry.act != Lock || enforced);
            const std::string complaints = host.accounts.complaints();
            if (noted) {
                EXPECT_NE(complaints.find(complaint), std::string::npos) << complaints;
            } else if (rules != MultiFrameRules::Unknown) {
                EXPECT_EQ(complaints, "");
            }
            EXPECT_EQ(code, noted && enforced ? PF_Err_INTERNAL_STRUCT_DAMAGED : PF_Err_NONE);
        }
    }
}

}  // namespace
}  // namespace host_kit
