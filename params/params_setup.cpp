#include "params/params_setup.h"

#include <cassert>

#include "host/render_engine.h"
#include "host/suite_handler.h"
#include "params/defaults_file.h"
#include "params/string_table.h"

namespace {

/// The ids by which saved projects know the controls.
enum ParamId : A_long {
    idColorThreshold = 1,
    idSoftness = 2,
    idColorKeyEnable = 3,
    idKeyColor = 4,
    idKeyThreshold = 5,
    idKeyInvert = 6,
    idBias = 7,
    idGroupStart = 1000,
    idGroupEnd = 1001,
};

constexpr PF_ParamIndex append = -1;

/// Adds controls one after the other, all through one record: what a control does not name stays as
/// the one before left it.
class ParamList {
  public:
    ParamList(const PF_InData* inData, A_long uiFlags) : inData_(inData) {
        def_.ui_flags = uiFlags;
    }

    void addSlider(ParamId id, TextId name, A_long min, A_long max, A_long value) {
        def_.u.sd = {.value = value,
                     .value_str = {},
                     .value_desc = {},
                     .valid_min = min,
                     .valid_max = max,
                     .slider_min = min,
                     .slider_max = max,
                     .dephault = value};
        addNamed(id, name, PF_Param_SLIDER, PF_ParamFlag_START_COLLAPSED);
    }

    void addCheckbox(ParamId id, TextId name, TextId label, A_long value, A_long moreFlags = 0) {
        def_.u.bd = {.value = value,
                     .dephault = static_cast<A_char>(value),
                     .reserved = 0,
                     .reserved1 = 0,
                     .u = {LookupString(label)}};
        addNamed(id, name, PF_Param_CHECKBOX, PF_ParamFlag_START_COLLAPSED | moreFlags);
    }

    void addColor(ParamId id, TextId name, const PF_Pixel& value) {
        def_.u.cd = {.value = value, .dephault = value};
        addNamed(id, name, PF_Param_COLOR, PF_ParamFlag_START_COLLAPSED);
    }

    void addGroupStart(ParamId id, TextId name) { addNamed(id, name, PF_Param_GROUP_START, 0); }

    void addGroupEnd(ParamId id) { add(id, PF_Param_GROUP_END, PF_ParamFlag_START_COLLAPSED); }

    /// The number of parameters so far, the host's input layer included.
    [[nodiscard]] A_long size() const { return size_; }

  private:
    void addNamed(ParamId id, TextId name, PF_ParamType type, A_long flags) {
        inData_->utils->ansi.strcpy(def_.name, LookupString(name));
        add(id, type, flags);
    }

    void add(ParamId id, PF_ParamType type, A_long flags) {
        def_.uu.id = id;
        def_.param_type = type;
        def_.flags = flags;
        const PF_Err code = inData_->inter.add_param(inData_->effect_ref, append, &def_);
        if (code != PF_Err_NONE) throw PF_Err{code};
        ++size_;
    }

    const PF_InData* inData_;
    PF_ParamDef def_{};
    A_long size_ = 1;
};

void AddColorKeyControls(ParamList& list, const ParamDefaults& defaults) {
    list.addCheckbox(idColorKeyEnable, TextId::ColorKeyEnable, TextId::ColorKeyEnableLabel,
                     defaults.colorKeyEnable, PF_ParamFlag_SUPERVISE);
    list.addColor(
        idKeyColor, TextId::KeyColor,
        {255, static_cast<A_u_char>(defaults.keyRed), static_cast<A_u_char>(defaults.keyGreen),
         static_cast<A_u_char>(defaults.keyBlue)});
    list.addSlider(idKeyThreshold, TextId::KeyThreshold, 0, 255, defaults.keyThreshold);
    list.addCheckbox(idKeyInvert, TextId::KeyInvert, TextId::KeyInvertLabel, defaults.keyInvert);
}

}  // namespace

PF_Err ParamsSetup(const PF_InData* inData, PF_OutData* outData) {
    assert(inData != nullptr && outData != nullptr);
    // Made for what it throws: without the basic suite the command fails before it does anything.
    const SuiteHandler suites(inData->pica_basicP);
    ParamList list(inData, IsRenderEngine(inData) ? PF_PUI_DISABLED : 0);
    ParamDefaults defaults = builtInDefaults;
    ReadParamDefaults(defaults, inData);

    list.addSlider(idColorThreshold, TextId::ColorThreshold, 1, 255, defaults.colorThreshold);
    list.addSlider(idSoftness, TextId::Softness, 0, 100, defaults.softness);
    list.addSlider(idBias, TextId::Bias, 0, 100, defaults.bias);
    if (defaults.colorKeyGroup != 0) list.addGroupStart(idGroupStart, TextId::ColorKeyGroup);
    AddColorKeyControls(list, defaults);
    if (defaults.colorKeyGroup != 0) list.addGroupEnd(idGroupEnd);

    outData->num_params = list.size();
    return PF_Err_NONE;
}
