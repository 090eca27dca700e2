// Texts made from the table of the command's words.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace nevrel {

/// The manual page, for man(1).
[[nodiscard]] std::string ManualPage(const CLI::App& app);

/// A script that completes subcommands, options and file names in "bash" or "zsh". Throws
/// UsageError for any other shell.
[[nodiscard]] std::string CompletionScript(const CLI::App& app, const std::string& shell);

}  // namespace nevrel
