#include "render/param_values.h"

#include "render/param_index_map.h"

namespace {

/// The controls, in the order in which they are checked out.
constexpr ParamRole kControls[] = {ParamRole::ColorThreshold, ParamRole::Softness,
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

    /// The parameter; null when the host did not give it.
    [[nodiscard]] const PF_ParamDef* get() const { return code_ == PF_Err_NONE ? &def_ : nullptr; }

  private:
    const PF_InData* inData_;
    PF_ParamDef def_{};
    PF_Err code_;
};

/// The process's map; null when it is not chosen yet and the parameter that tells the layout cannot
/// be had.
const ParamIndexMap* CheckoutParamIndexMap(const PF_InData* inData) {
    if (const ParamIndexMap* map = CurrentParamIndexMap()) return map;
    const CheckedOutParam param(inData, kLayoutParam);
    return param.get() == nullptr ? nullptr : &ChooseParamIndexMap(param.get()->param_type);
}

bool CheckoutValues(EffectValues& values, const PF_InData* inData) {
    const ParamIndexMap* map = CheckoutParamIndexMap(inData);
    if (map == nullptr) return false;
    for (const ParamRole role : kControls) {
        const CheckedOutParam param(inData, (*map)[role]);
        if (param.get() == nullptr) return false;
        StoreValue(values, role, param.get()->u);
    }
    return true;
}

}  // namespace

void FillJobFromParams(EffectValues& values, PF_ParamDef* const params[]) {
    const ParamIndexMap& map = ParamIndexMapOf(params);
    for (const ParamRole role : kControls) StoreValue(values, role, params[map[role]]->u);
}

void CheckoutPreRenderParams(PreRenderParams& values, const PF_InData* inData) {
    if (!CheckoutValues(values, inData)) values = {};
}
