// The module's own file, as the host and the system know it.
#pragma once

#include "sdk/effect_api.h"
#include "windows_stand_in/system_text.h"

/// The path of the module's file: as the host tells it or, where that leads nowhere, as the system
/// has it. The host tells it in the system's code page, which cannot hold every name. Empty when
/// neither gives a path of less than PF_MAX_PATH_LEN characters.
[[nodiscard]] SystemText PluginPath(const PF_InData* inData);

/// The loaded module of that file; of the module that this code is in where there is none.
[[nodiscard]] HMODULE PluginModule(const PF_InData* inData);
