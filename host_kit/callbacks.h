// The host's functions as an effect sees them. The tables are the same for every host and command
// of the process.
#pragma once

#include "sdk/effect_api.h"

namespace host_kit {

/// Suites; see suites.cpp.
[[nodiscard]] SPBasicSuite* BasicSuite();

/// The callbacks that come with PF_InData and the smart-render records; see callbacks.cpp.
[[nodiscard]] PF_InteractCallbacks InteractCallbacks();
[[nodiscard]] PF_UtilCallbacks* UtilCallbacks();
[[nodiscard]] PF_PreRenderCallbacks PreRenderCallbacks();
[[nodiscard]] PF_SmartRenderCallbacks SmartRenderCallbacks();

/// The host's text functions, shared by the suite and the utility callbacks.
int Sprintf(char* dst, const char* format, ...);
char* Strcpy(char* dst, const char* src);

}  // namespace host_kit
