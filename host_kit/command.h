// One command on its way through an effect: the records it passes and the state its callbacks work
// on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host_kit/host.h"

namespace host_kit {

class Frame;
class Instance;

/// What came back from a command.
struct CommandResult {
    PF_Err error = PF_Err_NONE;
    PF_OutData out{};

    [[nodiscard]] bool ok() const { return error == PF_Err_NONE; }
};

/// The pseudo-command under which pre-render data is deleted.
inline constexpr PF_Cmd deletePreRenderDataSelector = -1;

/// Lives on the stack of the thread that sends the command and is the thread's current command
/// meanwhile. Half of the host's functions get no effect_ref, so all of them find their host
/// through the current command.
class Command {
  public:
    Command(Host& host, PF_Cmd selector);
    /// Settles the accounts of the command.
    ~Command();
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// The thread's current command; a host call outside any command ends the program.
    [[nodiscard]] static Command& current();
    /// The current command if `effectRef` is its own; otherwise notes a violation and gives null.
    [[nodiscard]] static Command* of(PF_ProgPtr effectRef);

    /// Lends the images of a render and describes them in the input record; `output` may be null.
    void lendImages(World& input, World* output);

    enum class Params { Withheld, Passed };
    /// Calls the effect. `values` stay readable through check-out even when the array is withheld.
    CommandResult run(PF_EntryPoint entry, Params params, PF_LayerDef* output, void* extra);

    void violation(const std::string& what) const;
    /// Notes a violation unless `right`.
    void expect(bool right, const std::string& what) const;
    /// The same for those who go on only when it is right.
    [[nodiscard]] bool allows(bool right, const std::string& what) const;
    void lend(LoanKind kind, const void* key, std::string what) const;
    [[nodiscard]] bool giveBack(LoanKind kind, const void* key) const;
    /// The image behind a record that the effect passes; null, with a violation, for any other
    /// record.
    [[nodiscard]] World* find(const PF_EffectWorld* record) const;

    Host& host;
    const PF_Cmd selector;
    const std::uint64_t number;
    PF_InData inData{};
    PF_OutData outData;
    std::vector<PF_ParamDef> values;                  ///< what check-outs give and the array holds
    std::vector<PF_ParamDef>* declaration = nullptr;  ///< where add_param appends
    std::vector<World*> worlds;                       ///< images lent for the command
    std::vector<std::unique_ptr<World>> scratch;      ///< images that the effect asked for
    Instance* instance = nullptr;
    Frame* frame = nullptr;

  private:
    Command* const outer_;
    const World* input_ = nullptr;
    PF_Err error_ = PF_Err_NONE;
};

}  // namespace host_kit
