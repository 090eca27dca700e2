// A host that keeps books on an effect, and lets calls fail.
#pragma once

#include "host_kit/books/accounts.h"
#include "host_kit/books/call_monitor.h"
#include "host_kit/host.h"

namespace host_kit {

struct WatchedHost : Host, protected Observer {
    WatchedHost() { observer = this; }

    Accounts accounts;
    CallMonitor calls;
    bool watchesInputs = false;  ///< compares inputs before and after each command; slow

  protected:
    CallVerdict enter(HostCall call, A_long number, const char* name) override;
    void lend(const Loan& loan) override;
    void giveBack(LoanKind kind, const void* key, const CommandTag& by) override;
    void keep(PF_Handle handle) override;
    void violation(const char* what, const CommandTag& command) override;
    /// The effect may change neither its input record nor the parameters nor any image but the
    /// output.
    PF_Err send(const Command& command, std::span<const PF_ParamDef> passed,
                const std::function<PF_Err()>& call) override;
    void settle(const CommandTag& command, bool failed) override;
};

}  // namespace host_kit
