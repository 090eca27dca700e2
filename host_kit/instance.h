// One applied instance of an effect: its parameter values, its sequence data and the commands that
// need them.
#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "host_kit/effect.h"

namespace host_kit {

/// Values may be read, set and rendered from several threads at once; the sequence commands belong
/// to one thread.
class Instance {
  public:
    /// Starts with the declared defaults and without sequence data. The effect's parameters have
    /// been set up.
    explicit Instance(const Effect& effect);
    /// Sends set-down when there is sequence data.
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    // Parameters are found by id (`uu.id`), whatever the layout; an unknown id throws
    // std::out_of_range.
    [[nodiscard]] PF_ParamDef param(A_long id) const;
    void setSlider(A_long id, A_long value);
    void setCheckbox(A_long id, bool value);
    void setColor(A_long id, PF_Pixel value);

    CommandResult sequenceSetup();
    /// Hands a stored record, or none, back; the live record is replaced by the effect's answer.
    CommandResult sequenceResetup(std::optional<std::span<const std::byte>> stored);
    // Both put the flat copy into `flat`; the live record stays, and the second leaves it as it is.
    CommandResult sequenceFlatten(std::vector<std::byte>& flat);
    CommandResult flattenedCopy(std::vector<std::byte>& flat);
    CommandResult sequenceSetdown();
    [[nodiscard]] PF_Handle sequenceData() const { return sequenceData_; }

    CommandResult updateParamsUi() { return sendWithParams(PF_Cmd_UPDATE_PARAMS_UI); }
    CommandResult userChangedParam() { return sendWithParams(PF_Cmd_USER_CHANGED_PARAM); }
    CommandResult doDialog() { return sendWithParams(PF_Cmd_DO_DIALOG); }
    /// The classic render command.
    CommandResult render(World& input, World& output, const FrameTime& time = {});

    [[nodiscard]] const Effect& effect() const { return effect_; }
    /// The values as the host's array holds them, with `layer` as the input layer.
    [[nodiscard]] std::vector<PF_ParamDef> values(const PF_LayerDef& layer) const;
    /// PF_UpdateParamUI: takes name and flags over. False when there is no such control.
    bool updateControl(PF_ParamIndex index, const PF_ParamDef& def);
    /// Fills what a command of this instance finds in its input record.
    void fillInData(Command& command, const FrameTime& time) const;

  private:
    CommandResult sendSequence(PF_Cmd selector, PF_Handle incoming);
    CommandResult sendForCopy(PF_Cmd selector, std::vector<std::byte>& flat);
    CommandResult sendWithParams(PF_Cmd selector);
    PF_ParamDef& find(A_long id);

    const Effect& effect_;
    mutable std::mutex mutex_;
    std::vector<PF_ParamDef> params_;
    PF_Handle sequenceData_ = nullptr;
};

}  // namespace host_kit
