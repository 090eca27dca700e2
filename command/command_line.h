// The command's words: its subcommands and options, in one table for parsing, help and manual.
#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "command/controls.h"
#include "command/sequences/picture_list.h"
#include "command/smooth_picture.h"

namespace nevrel {

/// What the user typed.
struct CommandLine {
    std::string modulePath;
    std::string language;  ///< read by the module itself from the process's command line
    ControlValues controls;
    std::filesystem::path settings, savedSettings;

    PictureRequest pictures;
    RunSettings run;
    SmoothSettings smooth;
    std::optional<std::string> depth, raw, missing, progress;
    bool withoutPatterns = false, skipExisting = false, noClobber = false, overwrite = false,
         dryRun = false;
    std::filesystem::path report = "report.html";
    std::string shell;
};

/// The parser, which fills `line`; it must live as long.
[[nodiscard]] std::unique_ptr<CLI::App> MakeParser(CommandLine& line);

/// Turns words that stand for choices into the choices. Throws UsageError.
void FinishCommandLine(CommandLine& line);

}  // namespace nevrel
