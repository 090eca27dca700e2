#include "command/command_line.h"

#include <sched.h>

#include "command/errors.h"

namespace nevrel {
namespace {

constexpr int mostJobs = 1000;
constexpr char depthOption[] = "--depth";

/// Processors that this process may run on.
unsigned Processors() {
    cpu_set_t processors;
    if (sched_getaffinity(0, sizeof processors, &processors) != 0) return 1;
    return static_cast<unsigned>(CPU_COUNT(&processors));
}

PF_PixelFormat Depth(const std::string& text) {
    if (text == "8") return PF_PixelFormat_ARGB32;
    if (text == "16") return PF_PixelFormat_ARGB64;
    if (text == "float") return PF_PixelFormat_ARGB128;
    throw UsageError(depthOption + (": '" + text + "' is not 8, 16 or float"));
}

void AddControlOptions(CLI::App& app, CommandLine& line) {
    ControlValues& controls = line.controls;
    const std::string group = "Controls";
    for (std::size_t i = 0; i < sliderOptions.size(); ++i) {
        app.add_option(sliderOptions[i].option, controls.sliders[i], sliderOptions[i].help)
            ->type_name("N")
            ->group(group);
    }
    auto* key = app.add_option("--color-key", controls.colorKey,
                               "makes this color transparent: '#rrggbb', '#rgb' or a name")
                    ->type_name("COLOR")
                    ->group(group);
    app.add_flag("--no-color-key", controls.withoutColorKey,
                 "switches off a key that is on by default")
        ->excludes(key)
        ->group(group);
    auto* invert =
        app.add_flag("--invert", controls.invert, "makes every color but the key color transparent")
            ->group(group);
    app.add_flag("--no-invert", controls.withoutInvert,
                 "switches inversion off when it is on by default")
        ->excludes(invert)
        ->group(group);
    app.add_option("--settings", line.settings,
                   "takes controls from a file with the keys of the defaults file")
        ->type_name("FILE")
        ->group(group);
    app.add_option("--save-settings", line.savedSettings, "writes the controls to such a file")
        ->type_name("FILE")
        ->group(group);
}

/// What says which pictures are read, and how.
void AddInputOptions(CLI::App& command, CommandLine& line, const std::string& inputs) {
    const std::string group = "Pictures";
    command.add_option("input", line.pictures.inputs, inputs)
        ->multi_option_policy(CLI::MultiOptionPolicy::Throw)
        ->type_name("IN");
    command
        .add_option(depthOption, line.depth,
                    "depth to smooth at; the file's own by default, which it keeps")
        ->type_name("8|16|float")
        ->group(group);
    command.add_option("--layer", line.smooth.layer, "the layer of an EXR to smooth")
        ->type_name("NAME")
        ->group(group);
    command
        .add_option("--mask", line.pictures.mask,
                    "smooths where this picture is white, or the frame of this sequence")
        ->type_name("MASK")
        ->group(group);
    command
        .add_option("--frames", line.pictures.frames,
                    "frames to smooth, such as 1-240, 10-20,30 or 1-100x2; all by default")
        ->type_name("FRAMES")
        ->group(group);
    command
        .add_option("--missing", line.missing,
                    "what to do about frames that are not there; error by default")
        ->type_name("error|skip")
        ->group(group);
    command
        .add_flag("--no-pattern", line.withoutPatterns,
                  "takes #, @ and % in names as they are, as @ is beside # or %")
        ->group(group);
    command
        .add_option("--jobs", line.run.jobs,
                    "pictures to smooth at a time; the number of processors by default")
        ->check(CLI::Range(1, mostJobs).description(""))
        ->type_name("N")
        ->group(group);
}

void AddOutputOptions(CLI::App& smooth, CommandLine& line) {
    const std::string group = "Files";
    smooth
        .add_option("-o,--output", line.pictures.output,
                    "a picture, whose extension names the format; a folder, a new one with a slash "
                    "at its end; a sequence; or - for the standard output")
        ->type_name("OUT")
        ->group(group);
    smooth
        .add_option("--format", line.pictures.format,
                    "extension of the pictures in a folder; the inputs' own by default")
        ->type_name("EXT")
        ->group(group);
    smooth
        .add_flag("--all-parts", line.smooth.allParts,
                  "smooths every part of an EXR and every page of a TIFF")
        ->excludes("--layer")
        ->group(group);
    smooth
        .add_option("--compression", line.smooth.write.compression,
                    "0, none, to 9, the smallest files, in formats that have it")
        ->check(CLI::Range(0, 9).description(""))
        ->type_name("N")
        ->group(group);
    smooth
        .add_option("--raw", line.raw,
                    "smooths raw frames from the standard input to the standard output; FORM is "
                    "WIDTHxHEIGHT:rgba, :rgba64le or :rgbaf32le")
        ->type_name("FORM")
        ->group(group);
    smooth.add_option("--offset", line.pictures.offset, "is added to the numbers of the outputs")
        ->check(CLI::Range(-largestFrame, largestFrame).description(""))
        ->type_name("N")
        ->group(group);
    auto* skip =
        smooth.add_flag("--skip-existing", line.skipExisting, "leaves outputs that are there")
            ->group(group);
    auto* refuse =
        smooth.add_flag("--no-clobber", line.noClobber, "does nothing when an output is there")
            ->excludes(skip)
            ->group(group);
    smooth
        .add_flag("--overwrite", line.overwrite, "replaces outputs that are there, as by default")
        ->excludes(skip)
        ->excludes(refuse)
        ->group(group);
    smooth.add_flag("--dry-run", line.dryRun, "prints what would be done, and does nothing")
        ->group(group);
    smooth.add_flag("--fail-fast", line.run.failFast, "stops at the first picture that fails")
        ->group(group);
}

void AddLookOptions(CLI::App& smooth, CommandLine& line) {
    const std::string group = "Looking";
    Look& look = line.smooth.look;
    smooth
        .add_option("--compare", look.comparison,
                    "draws before and after side by side, and enlarged where most happens")
        ->excludes("--all-parts")
        ->type_name("FILE")
        ->group(group);
    smooth.add_option("--at", look.spot, "the place that --compare enlarges")
        ->type_name("X,Y")
        ->group(group);
    smooth.add_option("--edges", look.edges, "draws the edges found, and the runs measured")
        ->excludes("--all-parts")
        ->type_name("FILE")
        ->group(group);
}

void AddProgressOptions(CLI::App& smooth, CommandLine& line) {
    const std::string group = "Progress";
    smooth
        .add_option("--progress", line.progress,
                    "how to tell of it: one line on a terminal, else a line every few seconds; "
                    "json and openjd print lines for programs")
        ->type_name("auto|plain|json|openjd")
        ->group(group);
    auto* quiet =
        smooth.add_flag("--quiet", line.run.progress.quiet, "tells of nothing but failures")
            ->group(group);
    smooth
        .add_flag("--verbose", line.run.progress.verbose,
                  "tells of each picture, and what it could not keep in its file")
        ->excludes(quiet)
        ->group(group);
    smooth
        .add_flag("--timings", line.run.progress.timings,
                  "tells what each picture spent its time on")
        ->group(group);
}

void AddSmooth(CLI::App& app, CommandLine& line) {
    CLI::App* smooth = app.add_subcommand("smooth", "smooths the stair-stepped edges of pictures");
    smooth->footer(
        "Examples:\n"
        "  nevrel smooth cel.png -o smooth.png --softness 80\n"
        "  nevrel smooth shot.####.png -o smooth/ --frames 1-240 --skip-existing\n"
        "  nevrel smooth frames/ -o smooth/ --format exr --color-key white\n"
        "PNG, TIFF, TGA, BMP, EXR and DPX go in and out. Ranges and defaults of the controls are\n"
        "the module's own: see nevrel params. The exit status is 0 when all was done, 1 when\n"
        "pictures failed, 75 when some may go better later, 2 for wrong usage.");
    AddInputOptions(*smooth, line,
                    "files, folders, sequences such as shot.####.png, or - for the standard input");
    AddOutputOptions(*smooth, line);
    AddLookOptions(*smooth, line);
    AddProgressOptions(*smooth, line);
    AddControlOptions(*smooth, line);
}

void AddReport(CLI::App& app, CommandLine& line) {
    CLI::App* report = app.add_subcommand(
        "report", "makes a page that shows pictures before and after, with their edges");
    AddInputOptions(*report, line, "files, folders, or sequences such as shot.####.png");
    report->add_option("-o,--output", line.report, "the page; report.html by default")
        ->type_name("FILE")
        ->group("Pictures");
    AddProgressOptions(*report, line);
    AddControlOptions(*report, line);
}

/// Help without the parser's own remarks on options, within 100 columns.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter() { column_width(28); }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_items_expected_max() > 0 ? " " + option->get_type_name() : "";
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        constexpr std::size_t width = 72;
        std::string text = option->get_description();
        for (std::size_t begin = 0; text.size() - begin > width;) {
            const std::size_t space = text.rfind(' ', begin + width);
            if (space == std::string::npos || space <= begin) break;
            text[space] = '\n';
            begin = space + 1;
        }
        return text;
    }
};

}  // namespace

std::unique_ptr<CLI::App> MakeParser(CommandLine& line) {
    auto app = std::make_unique<CLI::App>(
        "Smooths the stair-stepped edges of pictures with the nevrel effect.", "nevrel");
    line.run.jobs = Processors();
    app->require_subcommand(1)->fallthrough();
    app->option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app->formatter(std::make_shared<HelpFormatter>());
    app->set_version_flag("-V,--version", "nevrel " NEVREL_VERSION, "prints the version");
    app->add_option("--module", line.modulePath,
                    "the effect's module; by default nevrel.so that came with this program")
        ->type_name("FILE");
    app->add_option("-L", line.language, "language of the effect's texts, JP or EN")
        ->type_name("LANGUAGE");
    AddSmooth(*app, line);
    AddReport(*app, line);
    CLI::App* options =
        app->add_subcommand("options", "shows the effect's options dialog, here in the terminal");
    options->footer(
        "The options of the controls set what the dialog calls the current parameter values.");
    AddControlOptions(*options, line);
    app->add_subcommand("about", "prints what the module says about itself");
    app->add_subcommand("params", "prints the controls with their ranges and defaults");
    app->add_subcommand("completion", "prints what completes the command's words in a shell")
        ->add_option("shell", line.shell, "the shell")
        ->required()
        ->type_name("bash|zsh");
    app->add_subcommand("manual", "prints the manual page")->group("");
    return app;
}

void FinishCommandLine(CommandLine& line) {
    if (line.depth) line.smooth.depth = Depth(*line.depth);
    if (line.missing && line.missing != "error" && line.missing != "skip")
        throw UsageError("--missing: '" + *line.missing + "' is not error or skip");
    line.pictures.missing = line.missing == "skip" ? Missing::Skip : Missing::Error;
    line.pictures.patterns = !line.withoutPatterns;
    line.run.existing = line.skipExisting ? Existing::Skip
                        : line.noClobber  ? Existing::Refuse
                                          : Existing::Overwrite;
    line.run.progress.style = ParseProgressStyle(line.progress.value_or(""));
    line.smooth.streamFormat = line.pictures.format;
}

}  // namespace nevrel
