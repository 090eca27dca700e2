#include "command/run_command.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "command/command_line.h"
#include "command/describe_module.h"
#include "command/errors.h"
#include "command/files/ending_signals.h"
#include "command/files/own_files.h"
#include "command/manual.h"
#include "command/raw_frames.h"
#include "command/session.h"
#include "command/settings_file.h"
#include "command/terminal_dialog.h"
#include "command/views/report.h"

namespace nevrel {
namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

/// Sets the controls from the settings file and the line.
void SetControls(const CommandLine& line, host_kit::Instance& instance) {
    if (!line.settings.empty()) ReadSettingsFile(line.settings, instance);
    ApplyControls(line.controls, instance);
}

/// Writes the controls where the line says.
void SaveControls(const CommandLine& line, const host_kit::Instance& instance) {
    if (!line.savedSettings.empty()) WriteSettingsFile(line.savedSettings, instance);
}

void RequireNoOutput(const PictureList& pictures) {
    std::size_t present = 0;
    std::filesystem::path first;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const std::filesystem::path output = pictures[i].output;
        if (std::error_code error; !std::filesystem::exists(output, error)) continue;
        if (present++ == 0) first = output;
    }
    if (present == 0) return;
    throw UsageError(first.string() + ": is there already" +
                     (present == 1 ? "" : ", as are " + std::to_string(present - 1) + " others") +
                     "; see --skip-existing and --overwrite");
}

void PrintPlan(const CommandLine& line, const PictureList& pictures,
               const host_kit::Instance& instance) {
    std::cout << SettingsText(instance);
    std::size_t present = 0;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const PicturePaths paths = pictures[i];
        const bool isThere = line.run.existing == Existing::Skip && IsPictureThere(paths.output);
        present += isThere ? 1 : 0;
        std::cout << Printable(paths.input.string()) << " -> " << Printable(paths.output.string());
        if (!paths.mask.empty()) std::cout << ", mask " << Printable(paths.mask.string());
        std::cout << (isThere ? ", is there already\n" : "\n");
    }
    std::cout << pictures.size() << " pictures, " << present << " of them there already, "
              << line.run.jobs << " at a time\n";
}

void RequireFreeOutput(const CommandLine& line) {
    const bool printsProgress = line.run.progress.style == ProgressStyle::Json ||
                                line.run.progress.style == ProgressStyle::OpenJd;
    if (printsProgress) {
        throw UsageError("--progress: the standard output is taken; choose plain or --quiet");
    }
}

int SmoothRaw(const CommandLine& line, host_kit::Instance& instance) {
    if (!line.pictures.inputs.empty() || !line.pictures.output.empty()) {
        throw UsageError(
            "--raw: goes from the standard input to the standard output, without names");
    }
    if (line.smooth.look.isWanted()) throw UsageError("--raw: has no pictures to look at");
    const bool isForFiles = line.pictures.frames || line.pictures.offset != 0 ||
                            line.skipExisting || line.noClobber || line.dryRun;
    if (isForFiles) {
        throw UsageError(
            "--raw: has no files; --frames, --offset, --skip-existing, --no-clobber and --dry-run "
            "are for those");
    }
    RequireFreeOutput(line);
    SmoothRawFrames(instance, line.smooth, ParseRawFormat(*line.raw), line.pictures.mask);
    return 0;
}

/// The effect on a sequence, as its controls are set.
class SequenceSession {
  public:
    explicit SequenceSession(const CommandLine& line)
        : session_(line.modulePath), instance_(session_.effect()) {
        SetControls(line, instance_);
    }

    [[nodiscard]] host_kit::Instance& instance() { return instance_; }

    /// Before pictures are rendered, when the line has proved right.
    void setUp(const CommandLine& line) {
        SaveControls(line, instance_);
        const auto result = instance_.sequenceSetup();
        if (!result.ok()) {
            throw host_kit::ModuleError(line.modulePath + ": sequence set-up " +
                                        FailureText(result));
        }
        OutliveReaders();
    }

  private:
    Session session_;
    host_kit::Instance instance_;
};

PictureList FindPictures(const CommandLine& line, const Complain& complain) {
    if (line.pictures.inputs.empty()) throw UsageError("input is required: files to smooth");
    PictureList pictures(line.pictures);
    if (!line.savedSettings.empty()) pictures.requireNotRead(line.savedSettings, "--save-settings");
    if (!line.run.progress.quiet) {
        for (const std::string& remark : pictures.remarks()) complain(OneLine(remark));
    }
    return pictures;
}

int Smooth(const CommandLine& line, const Complain& complain) {
    SequenceSession session(line);
    if (line.raw) {
        session.setUp(line);
        return SmoothRaw(line, session.instance());
    }
    const Look& look = line.smooth.look;
    if (line.pictures.output.empty() && !look.isWanted() && !line.pictures.inputs.empty())
        throw UsageError("--output is required: where they go");
    if (line.pictures.output == standardStream) RequireFreeOutput(line);
    const PictureList pictures = FindPictures(line, complain);
    RequireUsable(look, pictures);
    if (line.run.existing == Existing::Refuse) RequireNoOutput(pictures);
    if (line.dryRun) {
        PrintPlan(line, pictures, session.instance());
        return 0;
    }
    session.setUp(line);
    PrepareFolders(line.pictures.output, pictures);
    return SmoothPictures(session.instance(), line.smooth, line.run, pictures, complain);
}

int Report(const CommandLine& line, const Complain& complain) {
    SequenceSession session(line);
    const PictureList pictures = FindPictures(line, complain);
    pictures.requireNotRead(line.report, "--output");
    RequirePlaceFor(line.report);
    session.setUp(line);
    return MakeReport(session.instance(), line.smooth, line.run, pictures, line.report, complain);
}

void ShowOptions(const CommandLine& line) {
    TerminalDialog dialog(std::cin, std::cout);
    Window mainWindow;
    mainWindow.shower = &dialog;
    const Session session(line.modulePath, &mainWindow);
    host_kit::Instance instance(session.effect());
    SetControls(line, instance);
    SaveControls(line, instance);
    const auto result = instance.doDialog();
    if (!result.ok())
        throw host_kit::ModuleError(line.modulePath + ": options " + FailureText(result));
    if (!dialog.hasShown())
        throw host_kit::ModuleError(line.modulePath + ": has no options dialog");
}

/// How many letters have to be put in, left out or replaced to turn one word into the other.
std::size_t Distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

/// Where the line's first word is no command, tells so, and which one may have been meant.
void RequireKnownCommand(const CLI::App& app) {
    if (!app.get_subcommands().empty() || app.remaining().empty()) return;
    const std::string word = app.remaining().front();
    if (word.starts_with("-")) return;
    std::string message = "'" + word + "' is no command";
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        constexpr std::size_t mostSlips = 2;
        if (Distance(word, command->get_name()) <= mostSlips)
            throw UsageError(message + "; did you mean '" + command->get_name() + "'?");
    }
    throw UsageError(message + "; see nevrel --help");
}

/// What was printed may still lie in a buffer, and the reader may be gone or the disk full.
void RequirePrinted() {
    if (!std::cout.flush()) {
        throw std::runtime_error(std::string("the standard output cannot be written: ") +
                                 std::strerror(errno));
    }
}

int Run(int argc, const char* const* argv, const Complain& complain) {
    CommandLine line;
    line.modulePath = OwnFile("nevrel.so").string();
    const std::unique_ptr<CLI::App> app = MakeParser(line);
    try {
        app->parse(argc, argv);
    } catch (const CLI::Success& request) {
        app->exit(request);
        RequirePrinted();
        return 0;
    } catch (const CLI::ParseError& error) {
        RequireKnownCommand(*app);
        const bool lacksWord =
            error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError);
        if (lacksWord && app->get_subcommands().empty())
            throw UsageError("a command is required, such as smooth; see nevrel --help");
        throw UsageError(OneLine(error.what()));
    }
    FinishCommandLine(line);
    int status = 0;
    if (app->got_subcommand("smooth")) status = Smooth(line, complain);
    if (app->got_subcommand("report")) status = Report(line, complain);
    if (app->got_subcommand("options")) ShowOptions(line);
    if (app->got_subcommand("about")) std::cout << AboutText(Session(line.modulePath).effect());
    if (app->got_subcommand("params")) std::cout << ParamsText(Session(line.modulePath).effect());
    if (app->got_subcommand("completion")) std::cout << CompletionScript(*app, line.shell);
    if (app->got_subcommand("manual")) std::cout << ManualPage(*app);
    RequirePrinted();
    return status;
}

}  // namespace

int RunCommand(int argc, const char* const* argv, const Complain& complain) try {
    return Run(argc, argv, complain);
} catch (const UsageError& error) {
    complain(OneLine(error.what()));
    return wrongUsage;
} catch (const PassingError& error) {
    complain(OneLine(error.what()));
    return tryAgainStatus;
} catch (const std::exception& error) {
    complain(OneLine(error.what()));
    return failed;
}

}  // namespace nevrel
