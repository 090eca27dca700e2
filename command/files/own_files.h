// The files that come with the program.
#pragma once

#include <filesystem>

namespace nevrel {

/// The file beside the running program, or else in the folder that both are installed with.
[[nodiscard]] std::filesystem::path OwnFile(const char* name);

}  // namespace nevrel
