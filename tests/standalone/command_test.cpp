// How `nevrel` answers wrong usage, bad files and full disks, and what it leaves behind.
#include <algorithm>
#include <csignal>
#include <set>

#include "tests/standalone/command_runner.h"
#include "tests/standalone/picture_files.h"

namespace {

using OIIO::TypeDesc;

void WriteDisc(const std::string& path, const TypeDesc& type = TypeDesc::UINT8, int channels = 3) {
    TestPicture picture = MakePicture(120, 90, channels, type);
    FillWithNoise(picture, 9);
    WriteTestPicture(path, picture);
}

/// One line that starts with the program's name and holds every one of `words`.
void ExpectError(const CommandRun& run, int status, const std::vector<std::string>& words) {
    EXPECT_EQ(run.status, status) << run.errors;
    EXPECT_EQ(run.errors.find("nevrel: "), 0U) << run.errors;
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    for (const std::string& word : words) EXPECT_NE(run.errors.find(word), std::string::npos) << run.errors;
}

TEST_F(CommandTest, WrongUsageNamesOptionValueAndRange) {
    WriteDisc(path("in.png"));
    const std::string smooth = "smooth in.png -o out.png ";
    ExpectError(run(smooth + "--softness 101"), 2, {"--softness", "'101'", "0 to 100"});
    ExpectError(run(smooth + "--softness=-1"), 2, {"--softness", "'-1'", "0 to 100"});
    ExpectError(run(smooth + "--softness -1"), 2, {"--softness", "0 to 100"});
    ExpectError(run(smooth + "--color-threshold 0"), 2, {"--color-threshold", "'0'", "1 to 255"});
    ExpectError(run(smooth + "--bias 1.5"), 2, {"--bias", "'1.5'", "0 to 100"});
    ExpectError(run(smooth + "--key-threshold 99999999999"), 2, {"--key-threshold", "0 to 255"});
    ExpectError(run(smooth + "--color-key '#12345g'"), 2, {"--color-key", "'#12345g'", "'#ffffff'"});
    ExpectError(run(smooth + "--color-key ''"), 2, {"--color-key", "''"});
    ExpectError(run(smooth + "--depth 12"), 2, {"--depth", "'12'", "8, 16 or float"});
    ExpectError(run(smooth + "--blur 3"), 2, {"--blur"});
    ExpectError(run("smooth in.png"), 2, {"--output"});
    ExpectError(run(""), 2, {"subcommand"});
    EXPECT_EQ(files(), std::vector<std::string>{"in.png"});
    const CommandRun help = run("smooth --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--color-threshold"), std::string::npos);
}

TEST_F(CommandTest, ControlsStartFromTheModulesDefaults) {
    std::filesystem::copy("nevrel.so", path("nevrel.so"));
    EXPECT_NE(run("about --module nevrel.so").output.find("nevrel 1.0.8\n\n"), std::string::npos);
    const std::string table = run("params --module nevrel.so").output;
    for (const char* word : {"color threshold", "1 to 255  10", "0 to 100  70", "#ffffff", "in a group"}) {
        EXPECT_NE(table.find(word), std::string::npos) << table;
    }
    WriteDisc(path("in.png"));
    std::ofstream(path("nevrel.ini")) << "[defaults]\nSoftness=0\n[ui]\nColorkeyGroup=0\n";
    const std::string stored = run("params --module nevrel.so").output;
    EXPECT_NE(stored.find("0 to 100  0"), std::string::npos) << stored;
    EXPECT_NE(stored.find("without a group"), std::string::npos) << stored;
    ASSERT_EQ(run("smooth --module nevrel.so in.png -o out.png").status, 0);
    EXPECT_EQ(ReadTestPicture(path("in.png")).samples, ReadTestPicture(path("out.png")).samples);
    ASSERT_EQ(run("smooth --module nevrel.so --softness 70 in.png -o out.png").status, 0);
    EXPECT_NE(ReadTestPicture(path("in.png")).samples, ReadTestPicture(path("out.png")).samples);
    std::ofstream(path("nevrel.ini")) << "[defaults]\nColorkeyEnable=1\n";
    ASSERT_EQ(run("smooth --module nevrel.so in.png -o out.png").status, 0);
    EXPECT_EQ(ReadTestPicture(path("out.png")).spec.nchannels, 4);
    ASSERT_EQ(run("smooth --module nevrel.so --no-color-key in.png -o out.png").status, 0);
    EXPECT_EQ(ReadTestPicture(path("out.png")).spec.nchannels, 3);
}

TEST_F(CommandTest, BadInputsAndModulesFailInOneLine) {
    WriteDisc(path("in.png"));
    std::ofstream(path("text.png")) << "not a picture";
    std::ofstream(path("empty.tif")) << "";
    std::filesystem::create_directory(path("folder.exr"));
    TestPicture odd = MakePicture(8, 8, 2, TypeDesc::HALF);
    odd.spec.channelnames = {"depth.Z", "u"};
    odd.spec.alpha_channel = -1;
    WriteTestPicture(path("odd.exr"), odd);
    WriteDisc(path("photo.jpg"));
    const auto before = files();
    for (const std::string name :
         {"missing.png", "text.png", "empty.tif", "folder.exr", "odd.exr", "photo.jpg"}) {
        ExpectError(run("smooth " + name + " -o out.png"), 1, {name});
    }
    ExpectError(run("smooth in.png -o out.xyz"), 1, {"out.xyz", "extension"});
    ExpectError(run("smooth in.png -o out.jpg"), 1, {"out.jpg", "jpeg"});
    ExpectError(run("smooth in.png -o missing/out.png"), 1, {"missing/out.png"});
    ExpectError(run("smooth in.png -o folder.exr"), 1, {"folder.exr"});
    ExpectError(run("about --module missing.so"), 1, {"missing.so", "no such module"});
    ExpectError(run("about --module in.png"), 1, {"in.png", "cannot be loaded"});
    EXPECT_EQ(files(), before);
}

TEST_F(CommandTest, TruncatedPicturesAreErrors) {
    for (const char* kind : {"png", "tif", "tga", "bmp", "dpx", "exr"}) {
        const std::string whole = std::string("whole.") + kind, cut = std::string("cut.") + kind;
        const bool exr = std::string(kind) == "exr";
        WriteDisc(path(whole), exr ? TypeDesc::HALF : TypeDesc::UINT8, 4);
        const std::string bytes = FileText(path(whole));
        // A TGA may end without its footer: what follows the pixels is optional there.
        const std::size_t end = std::string(kind) == "tga" ? std::size_t{120} * 90 * 4 : bytes.size();
        for (const std::size_t size : {end - 1, end * 9 / 10, end / 2, std::size_t{100}, std::size_t{10}}) {
            std::ofstream(path(cut), std::ios::binary) << bytes.substr(0, size);
            const CommandRun result = smooth(cut);
            ExpectError(result, 1, {"nevrel: " + cut + ": "});
        }
        EXPECT_FALSE(std::filesystem::exists(path("out_" + cut)));
    }
}

TEST_F(CommandTest, TheInputIsNeverOverwritten) {
    WriteDisc(path("in.png"));
    const std::string bytes = FileText(path("in.png"));
    std::filesystem::create_hard_link(path("in.png"), path("hard.png"));
    std::filesystem::create_symlink("in.png", path("soft.png"));
    for (const std::string output : {"in.png", "./logs/../in.png", "hard.png", "soft.png"}) {
        ExpectError(run("smooth in.png -o " + output), 1, {output, "input"});
        ExpectError(run("smooth soft.png -o " + output), 1, {output, "input"});
    }
    EXPECT_EQ(FileText(path("in.png")), bytes);
}

TEST_F(CommandTest, OutputsAppearWholeOrNotAtAll) {
    WriteDisc(path("in.png"));
    std::ofstream(path("old.png")) << "old";
    std::filesystem::permissions(path("old.png"), std::filesystem::perms::owner_all);
    std::filesystem::create_symlink("old.png", path("link.png"));
    ASSERT_EQ(run("smooth in.png -o link.png").status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.png")));
    EXPECT_EQ(std::filesystem::status(path("old.png")).permissions(), std::filesystem::perms::owner_all);
    EXPECT_EQ(ReadTestPicture(path("old.png")).spec.width, 120);

    std::ofstream(path("old.png")) << "old";
    const auto before = files();
    ExpectError(run("smooth in.png -o old.png", "ulimit -f 1;"), 1, {"old.png"});
    EXPECT_EQ(run("smooth in.png -o /dev/full").status, 1);
    EXPECT_EQ(FileText(path("old.png")), "old");
    EXPECT_EQ(files(), before);
}

TEST_F(CommandTest, AnInterruptLeavesNothingBehind) {
    TestPicture picture = MakePicture(1500, 1000, 4, TypeDesc::UINT8);
    FillWithNoise(picture, 5);
    WriteTestPicture(path("in.tif"), picture);
    for (const std::string signal : {"INT", "TERM", "KILL"}) {
        for (const std::string delay : {"0.02", "0.05", "0.1", "0.15", "0.2", "0.3"}) {
            const std::string timeout = std::string("timeout -s ").append(signal).append(" ").append(delay);
            static_cast<void>(run("smooth in.tif -o out.tif", timeout));
            const std::vector<std::string> left = files();
            const bool whole = left == std::vector<std::string>{"in.tif", "out.tif"};
            EXPECT_TRUE(whole || left == std::vector<std::string>{"in.tif"}) << signal << " after " << delay;
            if (whole) {
                EXPECT_EQ(ReadTestPicture(path("out.tif")).spec.width, 1500);
            }
            std::filesystem::remove(path("out.tif"));
        }
    }
}

}  // namespace
