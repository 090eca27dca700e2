#include "host_kit/command.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "host_kit/callbacks.h"

namespace host_kit {
namespace {

thread_local Command* currentCommand = nullptr;

bool SameBytes(const std::vector<PF_ParamDef>& a, const std::vector<PF_ParamDef>& b) {
    return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(PF_ParamDef)) == 0;
}

}  // namespace

Command::Command(Host& theHost, PF_Cmd theSelector)
    : host(theHost),
      selector(theSelector),
      number(++theHost.commands),
      outData(theHost.blankOut),
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
    host.accounts.settle(number, error_ != PF_Err_NONE);
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
    input_ = &input;
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

    const bool watched = host.watchesInputs && input_ != nullptr;
    const std::uint64_t inputSum = watched ? input_->checksum() : 0;
    std::array<std::byte, sizeof inData> before{};
    std::memcpy(before.data(), &inData, sizeof inData);
    error_ = entry(selector, &inData, &outData, pointers.empty() ? nullptr : pointers.data(),
                   output, extra);
    // No byte of it may change, padding included.
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    expect(std::memcmp(before.data(), &inData, sizeof inData) == 0, "wrote to the input record");
    if (params == Params::Passed) expect(SameBytes(passed, values), "wrote to the parameter array");
    expect(!watched || input_->checksum() == inputSum, "wrote to the input image");
    for (const World* world : worlds) expect(world->guardsIntact(), "wrote outside an image");
    return {error_, outData};
}

void Command::violation(const std::string& what) const {
    host.accounts.addViolation(what + " in command " + std::to_string(selector) + " (number " +
                               std::to_string(number) + ")");
}

void Command::expect(bool right, const std::string& what) const {
    if (!right) violation(what);
}

bool Command::allows(bool right, const std::string& what) const {
    expect(right, what);
    return right;
}

void Command::lend(LoanKind kind, const void* key, std::string what) const {
    host.accounts.lend({kind, key, std::move(what), number, selector});
}

bool Command::giveBack(LoanKind kind, const void* key) const {
    return allows(host.accounts.giveBack(kind, key, number),
                  std::string(LoanKindName(kind)) + " given back that was not lent");
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
