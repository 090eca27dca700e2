// Where the host found the module.
#pragma once

#include <string>

#include "sdk/effect_api.h"

/// The path of the module's own file; empty when the host does not tell.
[[nodiscard]] std::string PluginPath(const PF_InData* inData);
