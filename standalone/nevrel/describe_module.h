// What a module says about itself, for people.
#pragma once

#include <string>

#include "standalone/effect.h"

namespace nevrel {

/// The about text, as lines. Throws standalone::ModuleError when the command fails.
[[nodiscard]] std::string AboutText(const standalone::Effect& effect);

/// A table of the declared parameters: place, id, kind, name, range, default and option.
[[nodiscard]] std::string ParamsText(const standalone::Effect& effect);

}  // namespace nevrel
