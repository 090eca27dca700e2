// The smallest module: it answers every command with its selector.
#include "sdk/effect_api.h"

#ifdef _WIN32
#define EXPORTED __declspec(dllexport)
#else
#define EXPORTED __attribute__((visibility("default")))
#endif

extern "C" EXPORTED PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* /*in*/, PF_OutData* /*out*/,
                                          PF_ParamDef* /*params*/[], PF_LayerDef* /*output*/,
                                          void* /*extra*/) {
    return cmd;
}
