// A module as one host has set it up, before any instance of it is applied.
#pragma once

#include <vector>

#include "host_kit/command.h"

namespace host_kit {

/// The time of a frame in the host's units.
struct FrameTime {
    A_long current = 0;
    A_long step = 1;
    A_u_long scale = 24;
};

/// The commands that belong to no instance. After set-up it is only read, so threads may share it.
class Effect {
  public:
    Effect(Host& host, PF_EntryPoint entry) : host_(host), entryPoint_(entry) {}

    CommandResult globalSetup();
    /// Fills `declared`, the input layer first; leaves it empty when the command fails.
    CommandResult paramsSetup();
    /// The text comes in the result's `return_msg`.
    [[nodiscard]] CommandResult about() const { return send(PF_Cmd_ABOUT); }
    /// Any command that needs no parameters, images or extra record.
    [[nodiscard]] CommandResult send(PF_Cmd selector) const;

    [[nodiscard]] Host& host() const { return host_; }
    [[nodiscard]] PF_EntryPoint entryPoint() const { return entryPoint_; }
    /// Parameter definitions in the order of the host's array.
    [[nodiscard]] const std::vector<PF_ParamDef>& declared() const { return declared_; }

  private:
    Host& host_;
    PF_EntryPoint entryPoint_;
    std::vector<PF_ParamDef> declared_;
};

}  // namespace host_kit
