#include "render/param_values.h"

#include "render/param_index_map.h"

namespace {

/// The controls, in the order in which they are checked out.
constexpr ParamRole controls[] = {ParamRole::ColorThreshold, ParamRole::Softness,
                                  ParamRole::Bias,           ParamRole::KeyThreshold,
                                  ParamRole::KeyInvert,      ParamRole::ColorKeyEnable,
                                  ParamRole::KeyColor};

void StoreValue(EffectValues& values, ParamRole role, const PF_ParamDefUnion& value) {
    switch (role) {
        case ParamRole::ColorThreshold:
            values.colorThreshold = value.sd.value;
            break;
        case ParamRole::Softness:
            values.softness = value.sd.value;
            break;
        case ParamRole::Bias:
            values.bias = value.sd.value;
            break;
        case ParamRole::KeyThreshold:
            values.keyThreshold = value.sd.value;
            break;
        case ParamRole::KeyInvert:
            values.keyInvert = value.bd.value;
            break;
        case ParamRole::ColorKeyEnable:
            values.colorKeyEnable = value.bd.value;
            break;
        case ParamRole::KeyColor:
            values.keyRed = value.cd.value.red;
            values.keyGreen = value.cd.value.green;
            values.keyBlue = value.cd.value.blue;
            break;
        default:  // the layer and the group carry no value
            break;
    }
}

/// A parameter checked out at the command's time, checked in when it goes.
class CheckedOutParam {
  public:
    CheckedOutParam(const PF_InData* inData, PF_ParamIndex index)
        : inData_(inData),
          code_(inData->inter.checkout_param(inData->effect_ref, index, inData->current_time,
                                             inData->time_step, inData->time_scale, &def_)) {}
    ~CheckedOutParam() {
        // The value has been taken: nothing depends on how the host takes the parameter back.
        if (code_ == PF_Err_NONE)
            static_cast<void>(inData_->inter.checkin_param(inData_->effect_ref, &def_));
    }
    CheckedOutParam(const CheckedOutParam&) = delete;
    CheckedOutParam& operator=(const CheckedOutParam&) = delete;

    /// The host's answer; there is a parameter when it is PF_Err_NONE.
    [[nodiscard]] PF_Err code() const { return code_; }
    [[nodiscard]] const PF_ParamDef& def() const { return def_; }

  private:
    const PF_InData* inData_;
    PF_ParamDef def_{};
    PF_Err code_;
};

/// Makes sure that the process has its map.
PF_Err CheckoutLayout(const PF_InData* inData) {
    if (CurrentParamIndexMap() != nullptr) return PF_Err_NONE;
    const CheckedOutParam param(inData, layoutParam);
    if (param.code() == PF_Err_NONE) ChooseParamIndexMap(param.def().param_type);
    return param.code();
}

}  // namespace

void FillJobFromParams(EffectValues& values, PF_ParamDef* const params[]) {
    const ParamIndexMap& map = ParamIndexMapOf(params);
    for (const ParamRole role : controls) StoreValue(values, role, params[map[role]]->u);
}

PF_Err CheckoutPreRenderParams(PreRenderParams& values, const PF_InData* inData) {
    if (const PF_Err code = CheckoutLayout(inData)) return code;
    const ParamIndexMap& map = *CurrentParamIndexMap();
    for (const ParamRole role : controls) {
        const CheckedOutParam param(inData, map[role]);
        if (param.code() != PF_Err_NONE) return param.code();
        StoreValue(values, role, param.def().u);
    }
    return PF_Err_NONE;
}
