// One host application: who it says it is and what it lends.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "host_kit/handle_heap.h"
#include "host_kit/observer.h"
#include "host_kit/world.h"
#include "sdk/effect_api.h"

namespace host_kit {

struct HostIdentity {
    A_long applId = PF_AppID_AfterEffects;
    PF_SpecVersion version{13, 0};
    bool renderEngine = false;
    std::string pluginPath{};    ///< the module's file, as get_platform_data tells it
    void* mainWindow = nullptr;  ///< native handle of the main window
};

/// Set it up, then share it: commands of several threads may run in one host at once.
struct Host {
    HostIdentity identity;
    MemoryStyle scratchMemory;  ///< of the images that an effect asks for; padding in whole pixels
    bool givesBasicSuite = true;  ///< false: commands come without `pica_basicP`
    PF_OutData blankOut{};        ///< what a command finds in its out-record
    HandleHeap handles;
    std::atomic<std::uint64_t> commands{0};  ///< started so far
    Observer* observer = &nobody;

    /// Marks a handle that a command handed over as the host's own.
    void adopt(PF_Handle handle) { observer->keep(handle); }
    /// A handle of the host's own; null when there is no memory.
    [[nodiscard]] PF_Handle makeHandle(std::size_t size);
    /// Frees a handle of the host's own; does nothing when it is null or gone already. One that
    /// the effect left locked stays until the host goes.
    void disposeHandle(PF_Handle handle);

  private:
    static inline Observer nobody;
};

}  // namespace host_kit
