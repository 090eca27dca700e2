// What a module says about itself, for people.
#pragma once

#include <string>

#include "host_kit/effect.h"

namespace nevrel {

/// The about text, as lines. Throws host_kit::ModuleError when the command fails.
[[nodiscard]] std::string AboutText(const host_kit::Effect& effect);

/// A table of the declared parameters: place, id, kind, name, range, default and option.
[[nodiscard]] std::string ParamsText(const host_kit::Effect& effect);

}  // namespace nevrel
