#include "params/update_params_ui.h"

#include <cassert>

#include "host/render_engine.h"
#include "host/suite_handler.h"
#include "render/param_index_map.h"

namespace {

/// Hands changed UI flags to the host, control by control.
class ControlUpdater {
  public:
    ControlUpdater(SuiteHandler& suites, const PF_InData* inData, PF_ParamDef* const params[])
        : suites_(suites), inData_(inData), params_(params), map_(ParamIndexMapOf(params)) {}

    [[nodiscard]] bool has(ParamRole role) const { return map_[role] != noParam; }
    [[nodiscard]] const PF_ParamDef& operator[](ParamRole role) const {
        return *params_[map_[role]];
    }

    void setFlags(ParamRole role, A_long uiFlags) {
        PF_ParamDef def = (*this)[role];
        def.ui_flags = uiFlags;
        // A control that the host does not update keeps its look; the others still follow.
        static_cast<void>(suites_.get<PF_ParamUtilsSuite1>().PF_UpdateParamUI(inData_->effect_ref,
                                                                              map_[role], &def));
    }

    void setEnabled(ParamRole role, bool enabled) {
        const A_long flags = (*this)[role].ui_flags;
        setFlags(role, enabled ? flags & ~PF_PUI_DISABLED : flags | PF_PUI_DISABLED);
    }

  private:
    SuiteHandler& suites_;
    const PF_InData* inData_;
    PF_ParamDef* const* params_;
    const ParamIndexMap& map_;
};

void DisableAll(ControlUpdater& controls) {
    constexpr ParamRole roles[] = {
        ParamRole::ColorThreshold, ParamRole::Softness,     ParamRole::ColorKeyEnable,
        ParamRole::KeyColor,       ParamRole::KeyThreshold, ParamRole::KeyInvert,
        ParamRole::Bias,           ParamRole::GroupStart,   ParamRole::GroupEnd};
    for (const ParamRole role : roles) {
        if (controls.has(role)) controls.setEnabled(role, false);
    }
}

}  // namespace

PF_Err UpdateParamsUi(const PF_InData* inData, PF_OutData* /*outData*/,
                      PF_ParamDef* const params[]) {
    assert(inData != nullptr && params != nullptr);
    SuiteHandler suites(inData->pica_basicP);
    ControlUpdater controls(suites, inData, params);
    if (IsRenderEngine(inData)) {
        DisableAll(controls);
        return PF_Err_NONE;
    }
    const PF_ParamDef& enable = controls[ParamRole::ColorKeyEnable];
    if (!controls.has(ParamRole::GroupStart) && (enable.ui_flags & PF_PUI_ECW_SEPARATOR) == 0) {
        controls.setFlags(ParamRole::ColorKeyEnable, PF_PUI_ECW_SEPARATOR);
    }
    const bool keyOn = enable.u.bd.value != 0;
    for (const ParamRole role :
         {ParamRole::KeyColor, ParamRole::KeyThreshold, ParamRole::KeyInvert}) {
        controls.setEnabled(role, keyOn);
    }
    return PF_Err_NONE;
}
