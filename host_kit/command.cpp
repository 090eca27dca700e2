#include "host_kit/command.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "host_kit/callbacks.h"

namespace host_kit {
namespace {

thread_local Command* currentCommand = nullptr;

}  // namespace

Command::Command(Host& theHost, PF_Cmd theSelector)
    : host(theHost),
      selector(theSelector),
      outData(theHost.blankOut),
      tag_{++theHost.commands, theSelector},
      outer_(std::exchange(currentCommand, this)) {
    inData.inter = InteractCallbacks();
    inData.utils = UtilCallbacks();
    inData.effect_ref = reinterpret_cast<PF_ProgPtr>(this);
    inData.quality = 1;
    inData.version = host.identity.version;
    inData.appl_id = host.identity.applId;
    inData.downsample_x = inData.downsample_y = inData.pixel_aspect_ratio = {1, 1};
    inData.pica_basicP = host.givesBasicSuite ? BasicSuite() : nullptr;
}

Command::~Command() {
    host.observer->settle(tag_, error_ != PF_Err_NONE);
    currentCommand = outer_;
}

Command& Command::current() {
    if (currentCommand == nullptr) {
        std::fputs("the effect called its host outside any command\n", stderr);
        std::abort();
    }
    return *currentCommand;
}

Command* Command::of(PF_ProgPtr effectRef) {
    Command& command = current();
    return command.allows(effectRef == command.inData.effect_ref, "foreign effect_ref") ? &command
                                                                                        : nullptr;
}

void Command::lendImages(World& input, World* output) {
    worlds.push_back(&input);
    if (output != nullptr) worlds.push_back(output);
    inData.width = input.width();
    inData.height = input.height();
    inData.extent_hint = {0, 0, input.width(), input.height()};
}

CommandResult Command::run(PF_EntryPoint entry, Params params, PF_LayerDef* output, void* extra) {
    std::vector<PF_ParamDef> passed;
    if (params == Params::Passed) passed = values;
    std::vector<PF_ParamDef*> pointers;
    for (PF_ParamDef& param : passed) pointers.push_back(&param);
    if (inData.num_params == 0) inData.num_params = static_cast<A_long>(values.size());

    error_ = host.observer->send(*this, passed, [&] {
        return entry(selector, &inData, &outData, pointers.empty() ? nullptr : pointers.data(),
                     output, extra);
    });
    return {error_, outData};
}

CallVerdict Command::enter(HostCall call, A_long number, const char* name) {
    const CallVerdict verdict = host.observer->enter(call, number, name);
    disturbed_ = disturbed_ || verdict.fault;
    return verdict;
}

void Command::violation(const char* what) const { host.observer->violation(what, tag_); }

void Command::expect(bool right, const char* what) const {
    if (!right) violation(what);
}

bool Command::allows(bool right, const char* what) const {
    expect(right, what);
    return right;
}

void Command::lend(LoanKind kind, const void* key, A_long number, const char* name) const {
    host.observer->lend({kind, key, number, name, tag_});
}

void Command::giveBack(LoanKind kind, const void* key) const {
    host.observer->giveBack(kind, key, tag_);
}

World* Command::find(const PF_EffectWorld* record) const {
    const void* ref = record == nullptr ? nullptr : record->platform_ref;
    for (World* world : worlds) {
        if (world == ref) return world;
    }
    for (const auto& world : scratch) {
        if (world.get() == ref) return world.get();
    }
    violation("an image that this command was not lent");
    return nullptr;
}

}  // namespace host_kit
