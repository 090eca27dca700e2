#include "standalone/nevrel/run_command.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <string>

#include "standalone/nevrel/controls.h"
#include "standalone/nevrel/describe_module.h"
#include "standalone/nevrel/picture_error.h"
#include "standalone/nevrel/session.h"
#include "standalone/nevrel/smooth_picture.h"
#include "standalone/nevrel/terminal_dialog.h"

namespace nevrel {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;
constexpr char kDepthOption[] = "--depth";

struct CommandLine {
    std::string modulePath;
    std::string language;  // read by the module itself from the process's command line
    SmoothJob job;
    std::optional<std::string> depth;
    ControlValues controls;
};

PF_PixelFormat Depth(const std::string& text) {
    if (text == "8") return PF_PixelFormat_ARGB32;
    if (text == "16") return PF_PixelFormat_ARGB64;
    if (text == "float") return PF_PixelFormat_ARGB128;
    throw UsageError(kDepthOption + (": '" + text + "' is not 8, 16 or float"));
}

void AddControlOptions(CLI::App& app, ControlValues& controls) {
    for (std::size_t i = 0; i < kSliderOptions.size(); ++i) {
        app.add_option(kSliderOptions[i].option, controls.sliders[i], kSliderOptions[i].help)->type_name("N");
    }
    auto* key = app.add_option("--color-key", controls.colorKey, "makes this color transparent")
                    ->type_name("#RRGGBB");
    app.add_flag("--no-color-key", controls.withoutColorKey, "switches off a key that is on by default")
        ->excludes(key);
    auto* invert =
        app.add_flag("--invert", controls.invert, "makes every color but the key color transparent");
    app.add_flag("--no-invert", controls.withoutInvert, "switches inversion off when it is on by default")
        ->excludes(invert);
}

void AddSmooth(CLI::App& app, CommandLine& line) {
    CLI::App* smooth = app.add_subcommand("smooth", "smooths the stair-stepped edges of a picture");
    smooth->footer("Ranges and defaults of the controls are the module's own: see `nevrel params`.");
    smooth->add_option("input", line.job.input, "PNG, TIFF, TGA, BMP, EXR or DPX")
        ->required()
        ->type_name("IN");
    smooth->add_option("-o,--output", line.job.output, "the smoothed picture; the extension names the format")
        ->required()
        ->type_name("OUT");
    AddControlOptions(*smooth, line.controls);
    smooth
        ->add_option(kDepthOption, line.depth,
                     "depth to smooth at; the file's own by default, which it keeps")
        ->type_name("8|16|float");
    smooth->add_option("--layer", line.job.layer, "the layer of an EXR to smooth")->type_name("NAME");
}

void AddOptions(CLI::App& app, CommandLine& line) {
    CLI::App* options =
        app.add_subcommand("options", "shows the effect's options dialog, here in the terminal");
    options->footer("The options of the controls set what the dialog calls the current parameter values.");
    AddControlOptions(*options, line.controls);
}

void Smooth(CommandLine& line) {
    if (line.depth) line.job.depth = Depth(*line.depth);
    const Session session(line.modulePath);
    standalone::Instance instance(session.effect());
    ApplyControls(line.controls, instance);
    const auto setUp = instance.sequenceSetup();
    if (!setUp.ok())
        throw standalone::ModuleError(line.modulePath + ": sequence set-up " + FailureText(setUp));
    SmoothPicture(instance, line.job);
}

void ShowOptions(const CommandLine& line) {
    TerminalDialog dialog(std::cin, std::cout);
    Window mainWindow;
    mainWindow.shower = &dialog;
    const Session session(line.modulePath, &mainWindow);
    standalone::Instance instance(session.effect());
    ApplyControls(line.controls, instance);
    const auto result = instance.doDialog();
    if (!result.ok()) throw standalone::ModuleError(line.modulePath + ": options " + FailureText(result));
    if (!dialog.hasShown()) throw standalone::ModuleError(line.modulePath + ": has no options dialog");
}

void Print(const std::string& text) { std::fputs(text.c_str(), stdout); }

int Run(int argc, const char* const* argv) {
    CommandLine line;
    line.modulePath = DefaultModulePath().string();
    CLI::App app("Smooths the stair-stepped edges of pictures with the nevrel effect.", "nevrel");
    app.require_subcommand(1)->fallthrough();
    app.add_option("--module", line.modulePath,
                   "the effect's module; by default nevrel.so beside this program")
        ->type_name("FILE");
    app.add_option("-L", line.language, "language of the effect's texts, JP or EN")->type_name("LANGUAGE");
    AddSmooth(app, line);
    AddOptions(app, line);
    app.add_subcommand("about", "prints what the module says about itself");
    app.add_subcommand("params", "prints the controls with their ranges and defaults");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        return app.exit(request);
    } catch (const CLI::ParseError& error) {
        throw UsageError(OneLine(error.what()));
    }
    if (app.got_subcommand("smooth")) Smooth(line);
    if (app.got_subcommand("options")) ShowOptions(line);
    if (app.got_subcommand("about")) Print(AboutText(Session(line.modulePath).effect()));
    if (app.got_subcommand("params")) Print(ParamsText(Session(line.modulePath).effect()));
    return 0;
}

}  // namespace

Outcome RunCommand(int argc, const char* const* argv) try {
    return {Run(argc, argv), {}};
} catch (const UsageError& error) {
    return {kWrongUsage, OneLine(error.what())};
} catch (const std::exception& error) {
    return {kFailed, OneLine(error.what())};
}

}  // namespace nevrel
