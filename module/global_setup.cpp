#include "module/global_setup.h"

#include <cassert>

#include "host/suite_handler.h"
#include "params/string_table.h"
#include "resources/effect_identity.h"
#include "windows_stand_in/windows_api.h"

// The composed words of the identity, held against their parts.
static_assert(NEVREL_VERSION_WORD ==
              (NEVREL_VERSION_MAJOR << 19 | NEVREL_VERSION_MINOR << 15 |
               NEVREL_VERSION_BUGFIX << 11 | PF_Stage_RELEASE << 9 | NEVREL_VERSION_BUILD));
static_assert(NEVREL_OUT_FLAGS ==
              (PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING | PF_OutFlag_I_DO_DIALOG |
               PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_SEND_UPDATE_PARAMS_UI));
#ifdef NEVREL_MULTI_FRAME
constexpr A_long multiFrameFlags2 =
    PF_OutFlag2_SUPPORTS_THREADED_RENDERING | PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA;
#else
constexpr A_long multiFrameFlags2 = 0;
#endif
static_assert(NEVREL_OUT_FLAGS2 ==
              (PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG | PF_OutFlag2_I_AM_THREADSAFE |
               PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE |
               multiFrameFlags2));

PF_Err GlobalSetup(const PF_InData* inData, PF_OutData* outData) {
    assert(inData != nullptr && outData != nullptr);
    // Made for what it throws: without the basic suite the command fails before it does anything.
    const SuiteHandler suites(inData->pica_basicP);
    outData->my_version = NEVREL_VERSION_WORD;
    outData->out_flags = NEVREL_OUT_FLAGS;
    outData->out_flags2 = NEVREL_OUT_FLAGS2;
    return PF_Err_NONE;
}

PF_Err About(const PF_InData* inData, PF_OutData* outData) {
    assert(inData != nullptr && outData != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    const char* name = LookupString(TextId::EffectName);
    const char* copyright = LookupString(TextId::Copyright);
    const bool shiftDown = GetKeyState(VK_SHIFT) < 0;
    const auto& ansi = suites.get<PF_ANSICallbacksSuite1>();
    if (shiftDown) {
        ansi.sprintf(outData->return_msg, "%s %d.%d.%d Release (build:%d)\r\r%s", name,
                     NEVREL_VERSION_MAJOR, NEVREL_VERSION_MINOR, NEVREL_VERSION_BUGFIX,
                     NEVREL_VERSION_BUILD, copyright);
    } else {
        ansi.sprintf(outData->return_msg, "%s %d.%d.%d\r\r%s", name, NEVREL_VERSION_MAJOR,
                     NEVREL_VERSION_MINOR, NEVREL_VERSION_BUGFIX, copyright);
    }
    return PF_Err_NONE;
}
