// How `nevrel` answers wrong usage, bad files and full disks, and what it leaves behind.
#include <unistd.h>

#include <map>
#include <utility>

#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

namespace {

void WriteRgb(const std::string& path) { WriteNoise(path, 120, 90, 3); }

TEST_F(CommandTest, WrongUsageNamesOptionValueAndRange) {
    WriteRgb(path("in.png"));
    const std::string smooth = "smooth in.png -o out.png ";
    const std::pair<std::string, std::vector<std::string>> wrong[] = {
        {smooth + "--softness 101", {"--softness", "'101'", "0 to 100"}},
        {smooth + "--color-threshold 0", {"--color-threshold", "'0'", "1 to 255"}},
        {smooth + "--bias 1.5", {"--bias", "'1.5'", "0 to 100"}},
        {smooth + "--key-threshold 99999999999", {"--key-threshold", "0 to 255"}},
        {smooth + "--color-key '#12345g'", {"--color-key", "'#12345g'", "'#rrggbb'"}},
        {smooth + "--depth 12", {"--depth", "'12'", "8, 16 or float"}},
        {smooth + "--blur 3", {"--blur"}},
        {smooth + "--jobs 0", {"--jobs", "0", "1 to 1000"}},
        {smooth + "--format png", {"--format", "folder"}},
        {"smooth in.png", {"--output"}},
        {"smooth in.png -o out.xyz", {"out.xyz", "extension"}},
        {"smooth in.png -o out.jpg", {"out.jpg", "jpeg"}},
        {"smooth in.png -o out/ --format xyz", {"--format", "xyz"}},
        {"smooth in.png in.png -o out.png", {"--output", "'out.png'", "folder"}},
        {"smooth in.png in.tif in.bmp -o out/ --format exr", {"in.png", "in.tif", "out/in.exr"}},
        {"smooth in.png other.png -o .", {"in.png", "input"}},
        {smooth + "--color-key whitish", {"--color-key", "'whitish'", "'white'"}},
        {smooth + "--invert", {"--invert", "--color-key"}},
        {"smoooth in.png", {"'smoooth'", "'smooth'"}},
        {smooth + "--frames 1-3", {"--frames", "shot.####.png"}},
        {smooth + "--missing never", {"--missing", "'never'"}},
        {smooth + "--mask other.####.png", {"--mask"}},
        {smooth + "--settings missing.ini", {"--settings", "missing.ini"}},
        {"smooth in.##.png -o out/", {"in.##.png", "no such frames"}},
        {"smooth . -o out.png --raw 8x8:rgba", {"--raw"}},
        {"smooth --raw 8x8:bgra", {"--raw", "'8x8:bgra'", "rgba64le"}},
        {"smooth .. -o out/", {"..", "without pictures"}},
        {"smooth - -o -  --progress json", {"--progress"}},
        {"smooth in.png --compare in.png", {"--compare", "in.png"}},
        {"smooth in.png --compare a.png --edges ./a.png", {"--edges", "a.png"}},
        {"smooth in.png --compare a.png --at 3", {"--at", "'3'", "X,Y"}},
        {"smooth in.png in.png --compare a.png", {"--compare", "one picture", "report"}},
        {"smooth --raw 8x8:rgba --edges a.png", {"--raw"}},
        {"smooth --raw 8x8:rgba --dry-run", {"--raw", "--dry-run"}},
        {"completion fish", {"'fish'", "bash or zsh"}},
        {"", {"command is required"}},
    };
    for (const auto& [arguments, words] : wrong) ExpectError(run(arguments), 2, words);
    EXPECT_EQ(files(), std::vector<std::string>{"in.png"});
    ExpectWords(run("smooth --help").output, {"--color-threshold"});
    EXPECT_EQ(run("--version").output, "nevrel 1.0.8\n");
    for (const std::string printing : {"about", "params", "--help", "--version"})
        ExpectError(run(printing + " 1<../errors"), 1, {"standard output"});
}

TEST_F(CommandTest, ColorsHaveNamesAndTheLastOptionCounts) {
    WriteRgb(path("in.png"));
    ASSERT_EQ(run("smooth in.png -o a.png --color-key '#FF0000' --softness 30").status, 0);
    for (const std::string options :
         {"--color-key red --softness 30", "--color-key '#f00' --softness 90 --softness 30"}) {
        ASSERT_EQ(run("smooth in.png -o b.png " + options).status, 0);
        EXPECT_TRUE(ReadText(path("a.png")) == ReadText(path("b.png"))) << options;
    }
}

TEST_F(CommandTest, ControlsStartFromTheModulesDefaults) {
    std::filesystem::copy("nevrel.so", path("nevrel.so"));
    WriteRgb(path("in.png"));
    const auto expectTold = [&](const std::string& command, const std::vector<std::string>& words) {
        ExpectWords(run(command + " --module nevrel.so").output, words);
    };
    const auto smoothed = [&](const std::string& options) {
        EXPECT_EQ(run("smooth --module nevrel.so in.png -o out.png " + options).status, 0);
        return ReadTestPicture(path("out.png"));
    };
    expectTold("about", {"nevrel 1.0.8\n\n"});
    expectTold("params",
               {"color threshold", "1 to 255  10", "0 to 100  70", "#ffffff", "in a group"});
    WriteText(path("nevrel.ini"), "[defaults]\nSoftness=0\n[ui]\nColorkeyGroup=0\n");
    expectTold("params", {"0 to 100  0", "without a group"});
    const auto input = ReadTestPicture(path("in.png")).samples;
    EXPECT_EQ(smoothed("").samples, input);
    EXPECT_NE(smoothed("--softness 70").samples, input);
    WriteText(path("nevrel.ini"), "[defaults]\nColorkeyEnable=1\n");
    EXPECT_EQ(smoothed("").spec.nchannels, 4);
    EXPECT_EQ(smoothed("--no-color-key").spec.nchannels, 3);
}

TEST_F(CommandTest, BadInputsAndModulesFailInOneLine) {
    WriteRgb(path("in.png"));
    WriteText(path("text.png"), "not a picture");
    WriteText(path("empty.tif"), "");
    std::filesystem::create_directory(path("folder.exr"));
    TestPicture odd = MakePictureFor("odd.exr", 8, 8, 2);
    odd.spec.channelnames = {"depth.Z", "u"};
    odd.spec.alpha_channel = -1;
    WriteTestPictures(path("odd.exr"), {odd});
    WriteRgb(path("photo.jpg"));
    WriteRgb(path("shut.png"));
    std::filesystem::permissions(path("shut.png"), {});
    std::filesystem::create_directory(path("shut"));
    std::filesystem::permissions(path("shut"), std::filesystem::perms::owner_read);
    const auto before = files();
    // The superuser gives up what permissions do not bind.
    const std::string bound =
        geteuid() == 0 ? "setpriv --bounding-set=-dac_override,-dac_read_search" : "";
    for (const std::string name :
         {"missing.png", "text.png", "empty.tif", "odd.exr", "photo.jpg", "shut.png"}) {
        ExpectError(run("smooth " + name + " -o out.png", bound), 1, {name});
    }
    ExpectError(run("smooth \"$(printf 'a\\033[31m\\302\\233\\r')\" -o out.png"), 1,
                {"a\\x1B[31m\\x9B\\x0D: no such file"});
    for (const std::string place : {"missing", "in.png", "shut"})
        ExpectError(run("smooth in.png -o " + place + "/out.png", bound), 1, {place});
    ExpectError(run("smooth missing.png in.png -o shut/", bound), 1, {"shut", "written"});
    ExpectError(run("about --module missing.so"), 1, {"missing.so", "no such module"});
    ExpectError(run("about --module in.png"), 1, {"in.png", "cannot be loaded"});
    ExpectError(run("about --module ."), 1, {".: is a folder, not a module"});
    ExpectError(
        run("about --module '" + std::filesystem::absolute(NO_UNNAMED_FILES).string() + "'"), 1,
        {NO_UNNAMED_FILES ": is no effect module: it exports no EntryPointFunc"});
    EXPECT_EQ(files(), before);
}

/// Cut off anywhere, or with a header that speaks of more pixels than any memory holds.
TEST_F(CommandTest, BrokenPicturesAreErrors) {
    const std::map<std::string, std::pair<std::size_t, std::string>> hugeSizes{
        {"tga", {12, "\xFF\xFF\xFF\xFF"}}, {"bmp", {18, "\xFF\xFF\xFF\x3F\xFF\xFF\xFF\x3F"}}};
    for (const std::string kind : {"png", "tif", "tga", "bmp", "dpx", "exr"}) {
        const std::string name = "broken." + kind;
        WriteNoise(path(name), 120, 90);
        const std::string whole = ReadText(path(name));
        // A TGA may end without its footer: what follows the pixels is optional there.
        const std::size_t end = kind == "tga" ? std::size_t{120} * 90 * 4 : whole.size();
        std::vector<std::string> broken;
        for (const std::size_t size :
             {end - 1, end * 9 / 10, end / 2, std::size_t{100}, std::size_t{10}})
            broken.push_back(whole.substr(0, size));
        if (kind == "png" || kind == "tif") {  // a check sum shows what the structure doesn't
            broken.push_back(whole);
            broken.back()[end / 2] ^= 1;
        }
        if (const auto huge = hugeSizes.find(kind); huge != hugeSizes.end()) {
            const auto& [at, size] = huge->second;
            broken.push_back(std::string(whole).replace(at, size.size(), size));
        }
        for (const std::string& bytes : broken) {
            WriteText(path(name), bytes);
            ExpectError(smooth(name), 1, {"nevrel: " + name + ": "});
        }
        EXPECT_FALSE(std::filesystem::exists(path("out_" + name)));
    }
}

TEST_F(CommandTest, TheInputIsNeverOverwritten) {
    WriteRgb(path("in.png"));
    const std::string bytes = ReadText(path("in.png"));
    std::filesystem::create_directory(path("out"));
    std::filesystem::create_symlink("in.png", path("soft.png"));
    for (const std::string name : {"hard.png", "out/soft.png"})
        std::filesystem::create_hard_link(path("in.png"), path(name));
    for (const std::string output : {"in.png", "./out/../in.png", "hard.png", "soft.png", "out"})
        ExpectError(run("smooth soft.png -o " + output), 2, {output, "input"});
    EXPECT_EQ(ReadText(path("in.png")), bytes);
}

TEST_F(CommandTest, OutputsAppearWholeOrNotAtAll) {
    using std::filesystem::perms;
    constexpr perms permissions = perms::owner_all | perms::others_write;
    WriteRgb(path("in.png"));
    WriteText(path("old.png"), "old");
    std::filesystem::permissions(path("old.png"), permissions);
    std::filesystem::create_directory(path("elsewhere"));
    const std::pair<const char*, const char*> links[] = {{"link.png", "old.png"},
                                                         {"dangling.png", "elsewhere/new.png"},
                                                         {"elsewhere/link.png", "beside.png"},
                                                         {"loop.png", "loop.png"}};
    for (const auto& [link, target] : links) {
        std::filesystem::create_symlink(target, path(link));
        EXPECT_EQ(run(std::string("smooth in.png -o ") + link).status,
                  link == std::string(target) ? 1 : 0);
        EXPECT_TRUE(std::filesystem::is_symlink(path(link)));
    }
    std::filesystem::copy(path("in.png"), path("a?b=c.png"));
    EXPECT_EQ(run("smooth 'a?b=c.png' -o 'd?.png'").status, 0);
    EXPECT_TRUE(ReadText(path("d?.png")) == ReadText(path("old.png")));
    EXPECT_EQ(std::filesystem::status(path("old.png")).permissions(), permissions);
    EXPECT_EQ(ReadTestPicture(path("old.png")).spec.width, 120);
    EXPECT_EQ(files("elsewhere"), (std::vector<std::string>{"beside.png", "link.png", "new.png"}));

    WriteText(path("old.png"), "old");
    const auto before = files();
    ExpectError(run("smooth in.png -o old.png", "ulimit -f 1;"), 1, {"old.png"});
    EXPECT_EQ(ReadText(path("old.png")), "old");
    EXPECT_EQ(files(), before);
}

/// In the last corner: 96 x 64 pixels, enlarged by eight, below the picture.
TEST_F(CommandTest, AComparisonEnlargesASpot) {
    WriteRgb(path("in.png"));
    ASSERT_EQ(run("smooth in.png --softness 0 --compare look.png --at 119,89").status, 0);
    const TestPicture in = ReadTestPicture(path("in.png")),
                      look = ReadTestPicture(path("look.png"));
    constexpr int gap = 8, spotWidth = 96 * 8, spotHeight = 64 * 8, top = gap + 90 + gap;
    ASSERT_EQ(look.spec.width, 3 * gap + 2 * spotWidth);
    ASSERT_EQ(look.spec.height, top + spotHeight + gap);
    for (const int c : {0, 1, 2})
        EXPECT_EQ(Unit(look, gap + spotWidth - 1, top + spotHeight - 1, c), Unit(in, 119, 89, c));
}

}  // namespace
