#include "command/run_command.h"

#include <sched.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "command/controls.h"
#include "command/describe_module.h"
#include "command/errors.h"
#include "command/files/ending_signals.h"
#include "command/session.h"
#include "command/smooth_picture.h"
#include "command/terminal_dialog.h"

namespace nevrel {
namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;
constexpr int mostJobs = 1000;
constexpr char depthOption[] = "--depth";

/// Processors that this process may run on.
unsigned Processors() {
    cpu_set_t processors;
    if (sched_getaffinity(0, sizeof processors, &processors) != 0) return 1;
    return static_cast<unsigned>(CPU_COUNT(&processors));
}

struct CommandLine {
    std::string modulePath;
    std::string language;  // read by the module itself from the process's command line
    std::vector<std::filesystem::path> inputs;
    std::filesystem::path output;
    std::string format;
    unsigned jobs = Processors();
    SmoothSettings settings;
    std::optional<std::string> depth;
    ControlValues controls;
};

PF_PixelFormat Depth(const std::string& text) {
    if (text == "8") return PF_PixelFormat_ARGB32;
    if (text == "16") return PF_PixelFormat_ARGB64;
    if (text == "float") return PF_PixelFormat_ARGB128;
    throw UsageError(depthOption + (": '" + text + "' is not 8, 16 or float"));
}

void AddControlOptions(CLI::App& app, ControlValues& controls) {
    for (std::size_t i = 0; i < sliderOptions.size(); ++i) {
        app.add_option(sliderOptions[i].option, controls.sliders[i], sliderOptions[i].help)
            ->type_name("N");
    }
    auto* key = app.add_option("--color-key", controls.colorKey,
                               "makes this color transparent: '#rrggbb', '#rgb' or a name")
                    ->type_name("COLOR");
    app.add_flag("--no-color-key", controls.withoutColorKey,
                 "switches off a key that is on by default")
        ->excludes(key);
    auto* invert = app.add_flag("--invert", controls.invert,
                                "makes every color but the key color transparent");
    app.add_flag("--no-invert", controls.withoutInvert,
                 "switches inversion off when it is on by default")
        ->excludes(invert);
}

void AddSmooth(CLI::App& app, CommandLine& line) {
    CLI::App* smooth = app.add_subcommand("smooth", "smooths the stair-stepped edges of pictures");
    smooth->footer(
        "A picture that fails does not stop the others; the exit status is 1 then.\n"
        "Ranges and defaults of the controls are the module's own: see `nevrel params`.");
    smooth->add_option("input", line.inputs, "PNG, TIFF, TGA, BMP, EXR or DPX")
        ->multi_option_policy(CLI::MultiOptionPolicy::Throw)
        ->required()
        ->type_name("IN");
    smooth
        ->add_option(
            "-o,--output", line.output,
            "the smoothed picture, whose extension names the format; or a folder for pictures of "
            "the inputs' names, a new one with a slash at its end")
        ->required()
        ->type_name("OUT");
    smooth
        ->add_option("--format", line.format,
                     "extension of the pictures in a folder; the inputs' own by default")
        ->type_name("EXT");
    smooth
        ->add_option("--jobs", line.jobs,
                     "pictures to smooth at a time; the number of processors by default")
        ->check(CLI::Range(1, mostJobs))
        ->type_name("N");
    AddControlOptions(*smooth, line.controls);
    smooth
        ->add_option(depthOption, line.depth,
                     "depth to smooth at; the file's own by default, which it keeps")
        ->type_name("8|16|float");
    smooth->add_option("--layer", line.settings.layer, "the layer of an EXR to smooth")
        ->type_name("NAME");
    smooth
        ->add_flag("--all-parts", line.settings.allParts,
                   "smooths every part of an EXR and every page of a TIFF, not just the first")
        ->excludes("--layer");
    smooth->add_flag("--verbose", line.settings.verbose,
                     "tells what a picture could not keep in its file");
}

void AddOptions(CLI::App& app, CommandLine& line) {
    CLI::App* options =
        app.add_subcommand("options", "shows the effect's options dialog, here in the terminal");
    options->footer(
        "The options of the controls set what the dialog calls the current parameter values.");
    AddControlOptions(*options, line.controls);
}

int Smooth(CommandLine& line, const Complain& complain) {
    if (line.depth) line.settings.depth = Depth(*line.depth);
    const std::vector<PicturePaths> pictures = FindOutputs(line.inputs, line.output, line.format);
    const Session session(line.modulePath);
    host_kit::Instance instance(session.effect());
    ApplyControls(line.controls, instance);
    const auto setUp = instance.sequenceSetup();
    if (!setUp.ok())
        throw host_kit::ModuleError(line.modulePath + ": sequence set-up " + FailureText(setUp));
    PrepareFolders(line.output, pictures);
    OutliveReaders();
    return SmoothPictures(instance, line.settings, pictures, line.jobs, complain) ? 0 : failed;
}

void ShowOptions(const CommandLine& line) {
    TerminalDialog dialog(std::cin, std::cout);
    Window mainWindow;
    mainWindow.shower = &dialog;
    const Session session(line.modulePath, &mainWindow);
    host_kit::Instance instance(session.effect());
    ApplyControls(line.controls, instance);
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
    line.modulePath = DefaultModulePath().string();
    CLI::App app("Smooths the stair-stepped edges of pictures with the nevrel effect.", "nevrel");
    app.require_subcommand(1)->fallthrough();
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.set_version_flag("-V,--version", "nevrel " NEVREL_VERSION, "prints the version");
    app.add_option("--module", line.modulePath,
                   "the effect's module; by default nevrel.so beside this program")
        ->type_name("FILE");
    app.add_option("-L", line.language, "language of the effect's texts, JP or EN")
        ->type_name("LANGUAGE");
    AddSmooth(app, line);
    AddOptions(app, line);
    app.add_subcommand("about", "prints what the module says about itself");
    app.add_subcommand("params", "prints the controls with their ranges and defaults");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        app.exit(request);
        RequirePrinted();
        return 0;
    } catch (const CLI::ParseError& error) {
        RequireKnownCommand(app);
        throw UsageError(OneLine(error.what()));
    }
    if (app.got_subcommand("smooth")) return Smooth(line, complain);
    if (app.got_subcommand("options")) ShowOptions(line);
    if (app.got_subcommand("about")) std::cout << AboutText(Session(line.modulePath).effect());
    if (app.got_subcommand("params")) std::cout << ParamsText(Session(line.modulePath).effect());
    RequirePrinted();
    return 0;
}

}  // namespace

int RunCommand(int argc, const char* const* argv, const Complain& complain) try {
    return Run(argc, argv, complain);
} catch (const UsageError& error) {
    complain(OneLine(error.what()));
    return wrongUsage;
} catch (const std::exception& error) {
    complain(OneLine(error.what()));
    return failed;
}

}  // namespace nevrel
