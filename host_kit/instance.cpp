#include "host_kit/instance.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace host_kit {

Instance::Instance(const Effect& effect) : effect_(effect), params_(effect.declared()) {
    assert(!params_.empty());
}

Instance::~Instance() {
    if (sequenceData_ != nullptr) sequenceSetdown();
    effect_.host().disposeHandle(sequenceData_);
}

PF_ParamDef& Instance::find(A_long id) {
    const auto found = std::find_if(params_.begin() + 1, params_.end(),
                                    [=](const PF_ParamDef& def) { return def.uu.id == id; });
    if (found == params_.end())
        throw std::out_of_range("no parameter with id " + std::to_string(id));
    return *found;
}

PF_ParamDef Instance::param(A_long id) const {
    const std::lock_guard lock(mutex_);
    return const_cast<Instance*>(this)->find(id);
}

void Instance::setSlider(A_long id, A_long value) {
    const std::lock_guard lock(mutex_);
    find(id).u.sd.value = value;
}

void Instance::setCheckbox(A_long id, bool value) {
    const std::lock_guard lock(mutex_);
    find(id).u.bd.value = value ? 1 : 0;
}

void Instance::setColor(A_long id, PF_Pixel value) {
    const std::lock_guard lock(mutex_);
    find(id).u.cd.value = value;
}

std::vector<PF_ParamDef> Instance::values(const PF_LayerDef& layer) const {
    const std::lock_guard lock(mutex_);
    std::vector<PF_ParamDef> values = params_;
    values.front().u.ld = layer;
    return values;
}

bool Instance::updateControl(PF_ParamIndex index, const PF_ParamDef& def) {
    const std::lock_guard lock(mutex_);
    if (index <= 0 || static_cast<std::size_t>(index) >= params_.size()) return false;
    PF_ParamDef& control = params_[static_cast<std::size_t>(index)];
    if (control.uu.id != def.uu.id || control.param_type != def.param_type) return false;
    control.ui_flags = def.ui_flags;
    control.flags = def.flags;
    std::copy(std::begin(def.name), std::end(def.name), std::begin(control.name));
    return true;
}

void Instance::fillInData(Command& command, const FrameTime& time) const {
    command.inData.sequence_data = sequenceData_;
    command.inData.current_time = time.current;
    command.inData.time_step = command.inData.local_time_step = time.step;
    command.inData.time_scale = time.scale;
}

CommandResult Instance::sendSequence(PF_Cmd selector, PF_Handle incoming) {
    Command command(effect_.host(), selector);
    fillInData(command, {});
    command.inData.sequence_data = incoming;
    const CommandResult result =
        command.run(effect_.entryPoint(), Command::Params::Withheld, nullptr, nullptr);
    effect_.host().adopt(result.out.sequence_data);
    command.expect(selector != PF_Cmd_SEQUENCE_SETDOWN || !result.ok() ||
                       !effect_.host().handles.owns(incoming),
                   "sequence data survived its set-down");
    return result;
}

CommandResult Instance::sequenceSetup() {
    const CommandResult result = sendSequence(PF_Cmd_SEQUENCE_SETUP, nullptr);
    if (result.ok()) sequenceData_ = result.out.sequence_data;
    return result;
}

CommandResult Instance::sequenceResetup(std::optional<std::span<const std::byte>> stored) {
    Host& host = effect_.host();
    PF_Handle incoming = stored ? host.makeHandle(stored->size()) : nullptr;
    if (incoming != nullptr)
        std::copy(stored->begin(), stored->end(), host.handles.bytes(incoming).begin());
    const CommandResult result = sendSequence(PF_Cmd_SEQUENCE_RESETUP, incoming);
    host.disposeHandle(incoming);
    if (result.out.sequence_data != nullptr) {
        host.disposeHandle(sequenceData_);
        sequenceData_ = result.out.sequence_data;
    }
    return result;
}

CommandResult Instance::sequenceFlatten(std::vector<std::byte>& flat) {
    return sendForCopy(PF_Cmd_SEQUENCE_FLATTEN, flat);
}

CommandResult Instance::flattenedCopy(std::vector<std::byte>& flat) {
    return sendForCopy(PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, flat);
}

CommandResult Instance::sendForCopy(PF_Cmd selector, std::vector<std::byte>& flat) {
    Host& host = effect_.host();
    const CommandResult result = sendSequence(selector, sequenceData_);
    const std::span<std::byte> bytes = host.handles.bytes(result.out.sequence_data);
    flat.assign(bytes.begin(), bytes.end());
    host.disposeHandle(result.out.sequence_data);
    return result;
}

CommandResult Instance::sequenceSetdown() {
    const CommandResult result = sendSequence(PF_Cmd_SEQUENCE_SETDOWN, sequenceData_);
    if (!result.ok()) return result;
    effect_.host().disposeHandle(std::exchange(sequenceData_, nullptr));
    return result;
}

CommandResult Instance::sendWithParams(PF_Cmd selector) {
    Command command(effect_.host(), selector);
    fillInData(command, {});
    command.values = values({});
    command.instance = this;
    return command.run(effect_.entryPoint(), Command::Params::Passed, nullptr, nullptr);
}

CommandResult Instance::render(World& input, World& output, const FrameTime& time) {
    Command command(effect_.host(), PF_Cmd_RENDER);
    fillInData(command, time);
    command.lendImages(input, &output);
    command.values = values(input.record());
    return command.run(effect_.entryPoint(), Command::Params::Passed, &output.record(), nullptr);
}

}  // namespace host_kit
