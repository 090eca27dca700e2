// `nevrel smooth` with several pictures at once.
#include <algorithm>

#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

namespace {

using OIIO::TypeDesc;

class SequenceTest : public CommandTest {
  protected:
    SequenceTest() { std::filesystem::create_directory(folder / "in"); }

    /// A frame in the folder "in", unlike every other one.
    void writeFrame(const std::string& name, int width = 120, int height = 90) {
        const bool exr = name.ends_with("exr");
        TestPicture picture = MakePicture(width, height, 4, exr ? TypeDesc::HALF : TypeDesc::UINT8,
                                          exr ? Alpha::Associated : Alpha::Straight);
        FillWithNoise(picture, ++frames_);
        WriteTestPicture(path("in/" + name), picture);
    }

  private:
    unsigned frames_ = 0;
};

TEST_F(SequenceTest, ResultsAreThoseOfOneByOne) {
    for (const std::string number : {"1", "2", "3"}) {
        for (const char* kind : {"png", "tif", "tga", "bmp", "dpx", "exr"})
            writeFrame(number + "." + kind);
    }
    const std::vector<std::string> names = files("in");
    for (const std::string& name : names)
        ASSERT_EQ(run("smooth in/" + name + " -o one/" + name, "mkdir -p one;").status, 0);
    for (const std::string jobs : {"--jobs 1", "--jobs 2", "--jobs 7", "--jobs 1000", ""}) {
        const CommandRun several = run("smooth in/* -o new/several/ " + jobs, "rm -rf new;");
        ASSERT_EQ(several.status, 0) << several.errors;
        EXPECT_EQ(files("new/several"), names);
        for (const std::string& name : names)
            EXPECT_TRUE(FileText(path("new/several/" + name)) == FileText(path("one/" + name)))
                << name << jobs;
    }
    ASSERT_EQ(run("smooth in/*.dpx -o one --format png").status, 0);
    EXPECT_EQ(ReadTestPicture(path("one/2.png")).samples,
              ReadTestPicture(path("one/2.dpx")).samples);
}

/// Failures are told in the order of the inputs, whichever thread comes first.
TEST_F(SequenceTest, OneFailureStopsNoOther) {
    for (const std::string name : {"2.png", "4.png", "6.png"}) writeFrame(name);
    writeFrame("1.png", 1200, 900);
    std::filesystem::resize_file(path("in/1.png"),
                                 std::filesystem::file_size(path("in/1.png")) - 20);
    std::ofstream(path("in/3.png")) << "no picture";
    std::ofstream(path("in/5.txt")) << "no picture";
    for (const std::string jobs : {"1", "2", "6"}) {
        const CommandRun result = run("smooth in/* -o out/ --jobs " + jobs, "rm -rf out;");
        EXPECT_EQ(result.status, 1);
        std::size_t last = 0;
        for (const std::string failed :
             {"nevrel: in/1.png: ", "nevrel: in/3.png: ", "nevrel: out/5.txt: "}) {
            const std::size_t at = result.errors.find(failed);
            ASSERT_NE(at, std::string::npos) << result.errors;
            EXPECT_GE(at, last) << result.errors;
            last = at;
        }
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 3) << result.errors;
        EXPECT_EQ(files("out"), (std::vector<std::string>{"2.png", "4.png", "6.png"}));
    }
}

/// Two outputs that a link makes one.
TEST_F(SequenceTest, OutputsThatAreTheSameFileAreRefused) {
    for (const std::string name : {"1.png", "2.png"}) writeFrame(name);
    std::filesystem::create_directory(path("out"));
    std::filesystem::create_symlink("2.png", path("out/1.png"));
    ExpectError(run("smooth in/* -o out"), 2, {"out/2.png", "in/1.png", "in/2.png"});
    EXPECT_EQ(files("out"), std::vector<std::string>{"1.png"});
}

TEST_F(SequenceTest, AnInterruptLeavesNothingBehind) {
    for (const std::string name : {"1.tif", "2.tif", "3.tif", "4.tif", "5.tif", "6.tif"})
        writeFrame(name, 600, 400);
    for (const std::string signal : {"INT", "TERM", "KILL"}) {
        for (const std::string delay :
             {"0.02", "0.05", "0.1", "0.15", "0.2", "0.25", "0.3", "0.4"}) {
            static_cast<void>(run("smooth in/*.tif -o out --jobs 3",
                                  "rm -rf out; mkdir out; timeout -s " + signal + " " + delay));
            for (const std::string& name : files("out")) {
                EXPECT_TRUE(std::filesystem::exists(path("in/" + name)))
                    << name << " after " << delay;
                EXPECT_EQ(ReadTestPicture(path("out/" + name)).spec.width, 600);
            }
        }
    }
}

}  // namespace
