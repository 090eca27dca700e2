// One command on its way through an effect: the records it passes and the state its callbacks work
// on.
#pragma once

#include <cstdint>
#include <memory>
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
    ~Command();
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// The thread's current command; a host call outside any command ends the program.
    [[nodiscard]] static Command& current();
    /// The current command if `effectRef` is its own; otherwise null, which is a violation.
    [[nodiscard]] static Command* of(PF_ProgPtr effectRef);

    /// Lends the images of a render and describes them in the input record; `output` may be null.
    void lendImages(World& input, World* output);

    enum class Params { Withheld, Passed };
    /// Calls the effect. `values` stay readable through check-out even when the array is withheld.
    CommandResult run(PF_EntryPoint entry, Params params, PF_LayerDef* output, void* extra);

    /// Every host function calls this first and does as the verdict says.
    CallVerdict enter(HostCall call, A_long number = 0, const char* name = nullptr);
    /// Whether a call of this command had to fail.
    [[nodiscard]] bool disturbed() const { return disturbed_; }

    // What the observer is told.
    void violation(const char* what) const;
    /// A violation unless `right`.
    void expect(bool right, const char* what) const;
    /// The same for those who go on only when it is right.
    [[nodiscard]] bool allows(bool right, const char* what) const;
    void lend(LoanKind kind, const void* key, A_long number = 0, const char* name = "") const;
    void giveBack(LoanKind kind, const void* key) const;

    /// The image behind a record that the effect passes; null, which is a violation, for any other
    /// record.
    [[nodiscard]] World* find(const PF_EffectWorld* record) const;

    Host& host;
    const PF_Cmd selector;
    PF_InData inData{};
    PF_OutData outData;
    std::vector<PF_ParamDef> values;                  ///< what check-outs give and the array holds
    std::vector<PF_ParamDef>* declaration = nullptr;  ///< where add_param appends
    std::vector<World*> worlds;                       ///< images lent for it, the input first
    std::vector<std::unique_ptr<World>> scratch;      ///< images that the effect asked for
    Instance* instance = nullptr;
    Frame* frame = nullptr;

  private:
    const CommandTag tag_;
    Command* const outer_;
    bool disturbed_ = false;
    PF_Err error_ = PF_Err_NONE;
};

}  // namespace host_kit
