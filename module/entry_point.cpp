#include "module/entry_point.h"

#include "module/global_setup.h"
#include "module/sequence_data.h"
#include "params/params_setup.h"
#include "params/update_params_ui.h"
#include "render/render_commands.h"
#include "ui/option_dialog.h"

namespace {

PF_Err Dispatch(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData, PF_ParamDef* params[],
                PF_LayerDef* output, void* extra) {
    switch (cmd) {
        case PF_Cmd_ABOUT:
            return About(inData, outData);
        case PF_Cmd_GLOBAL_SETUP:
            return GlobalSetup(inData, outData);
        case PF_Cmd_PARAMS_SETUP:
            return ParamsSetup(inData, outData);
        case PF_Cmd_SEQUENCE_SETUP:
            return SequenceSetup(inData, outData);
        case PF_Cmd_SEQUENCE_RESETUP:
            return SequenceResetup(inData, outData);
        case PF_Cmd_SEQUENCE_FLATTEN:
            return SequenceFlatten(inData, outData);
        case PF_Cmd_SEQUENCE_SETDOWN:
            return SequenceSetdown(inData, outData);
        case PF_Cmd_DO_DIALOG:
            DoDialog(inData, params);
            return PF_Err_NONE;
        case PF_Cmd_RENDER:
            return Render(inData, outData, params, output);
        case PF_Cmd_USER_CHANGED_PARAM:
        case PF_Cmd_UPDATE_PARAMS_UI:
            return UpdateParamsUi(inData, outData, params);
        case PF_Cmd_SMART_PRE_RENDER:
            return SmartPreRender(inData, outData, static_cast<PF_PreRenderExtra*>(extra));
        case PF_Cmd_SMART_RENDER:
            return SmartRender(inData, outData, static_cast<PF_SmartRenderExtra*>(extra));
#ifdef NEVREL_MULTI_FRAME
        case PF_Cmd_GET_FLATTENED_SEQUENCE_DATA:
            return GetFlattenedSequenceData(inData, outData);
#endif
        default:
            return PF_Err_NONE;
    }
}

}  // namespace

PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData, PF_ParamDef* params[],
                      PF_LayerDef* output, void* extra) noexcept {
    try {
        return Dispatch(cmd, inData, outData, params, output, extra);
    } catch (PF_Err code) {
        return code;
    } catch (...) {  // standard exceptions; nothing else is thrown, and nothing may reach the host
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
}
