// `nevrel smooth` with several pictures at once.
#include <algorithm>
#include <regex>

#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

namespace {

class SequenceTest : public CommandTest {
  protected:
    SequenceTest() { std::filesystem::create_directory(folder / "in"); }

    /// A frame in the folder "in", unlike every other one.
    void writeFrame(const std::string& name, int width = 120, int height = 90) {
        WriteNoise(path("in/" + name), width, height, 4, ++frames_);
    }

    /// Frames whose names have a place for the number, `####`.
    void writeFrames(std::initializer_list<int> frames) {
        for (const int frame : frames) {
            char name[32];
            std::snprintf(name, sizeof name, "s.%04d.png", frame);
            writeFrame(name, 12, 9);
        }
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
            EXPECT_TRUE(ReadText(path("new/several/" + name)) == ReadText(path("one/" + name)))
                << name << jobs;
    }
}

/// Failures are told in the order of the inputs, whichever thread comes first.
TEST_F(SequenceTest, OneFailureStopsNoOther) {
    for (const std::string name : {"2.png", "4.png", "6.png"}) writeFrame(name);
    writeFrame("1.png", 1200, 900);
    std::filesystem::resize_file(path("in/1.png"),
                                 std::filesystem::file_size(path("in/1.png")) - 20);
    WriteText(path("in/3.png"), "no picture");
    std::ofstream(path("in/5.txt")) << "no picture";
    for (const std::string jobs : {"1", "2", "6"}) {
        const CommandRun result = run("smooth in/* -o out/ --jobs " + jobs, "rm -rf out;");
        EXPECT_EQ(result.status, 1);
        const std::regex inOrder(
            "nevrel: in/1.png: .*\nnevrel: in/3.png: .*\nnevrel: out/5.txt: .*\n");
        EXPECT_TRUE(std::regex_match(result.errors, inOrder)) << result.errors;
        EXPECT_EQ(files("out"), (std::vector<std::string>{"2.png", "4.png", "6.png"}));
    }
}

/// What the words say goes where: with nothing done, each picture's way is printed.
TEST_F(SequenceTest, PatternsFoldersAndRangesNamePictures) {
    writeFrames({-3, 0, 1, 2, 10, 10000});
    for (const std::string name : {"cel10.png", "cel9.png", "note.txt", "100%.png", "e@2x.png"})
        std::ofstream(path(name));
    const struct {
        std::string words, printed;
    } cases[] = {
        {"in/s.####.png -o out/ --frames 1-2",
         "in/s.0001.png -> out/s.0001.png\n"
         "in/s.0002.png -> out/s.0002.png\n"},
        {"in/s.#.png -o o.@@.exr --frames 2-0x2",
         "in/s.0002.png -> o.02.exr\n"
         "in/s.0000.png -> o.00.exr\n"},
        {"'in/s.[####].png' -o o.%d.tif --frames 10 --offset -11", "in/s.0010.png -> o.-1.tif\n"},
        {"in/s.%04d.png -o out/ --format tga --frames 0-10:5,-3--3,0 --missing skip",
         "in/s.0000.png -> out/s.0000.tga\n"
         "in/s.0010.png -> out/s.0010.tga\n"
         "in/s.-003.png -> out/s.-003.tga\n"},
        {"in/s.####.png -o out/ --missing skip --frames 9-20000",
         "in/s.0010.png -> out/s.0010.png\n"
         "in/s.10000.png -> out/s.10000.png\n"},
        {". -o out/",
         "./100%.png -> out/100%.png\n"
         "./cel9.png -> out/cel9.png\n"
         "./cel10.png -> out/cel10.png\n"
         "./e@2x.png -> out/e@2x.png\n"},
        {"e@2x.png -o f@3x.png", "e@2x.png -> f@3x.png\n"},
        {"100%%.png -o out/", "100%.png -> out/100%.png\n"},
        {"a.#.png -o b.#.png --no-pattern", "a.#.png -> b.#.png\n"},
        {"in/s.#.png -o o@2x.%0d.png --frames 2,-3 --save-settings dry",
         "in/s.0002.png -> o@2x.2.png\n"
         "in/s.-003.png -> o@2x.-3.png\n"},
    };
    for (const auto& [words, printed] : cases) {
        const CommandRun plan = run("smooth --dry-run " + words);
        EXPECT_EQ(plan.status, 0) << words << plan.errors;
        const auto ways = std::count(printed.begin(), printed.end(), '\n');
        ExpectWords(plan.output, {"\n" + printed, "\n" + std::to_string(ways) + " pictures"});
    }
    const std::pair<std::string, std::vector<std::string>> wrong[] = {
        {"in/s.####.png -o out/", {"-2--1, 3-9, 11-9999 are missing, 6 are there", "--missing"}},
        {"in/s.####.png -o out/ --frames 1-5", {"frames 3-5 are missing, 2 are there"}},
        {"in/s.####.png -o out/ --frames 50-60 --missing skip", {"no such frames as 50-60"}},
        {"in/s.##.png -o out/ --frames 1", {"no such frames"}},
        {"in/s.#.%d.png -o out/", {"several places"}},
        {"in/s.####.png -o one.png --frames 1-2", {"--output", "pattern"}},
        {"in/s.####.png -o in/ --frames 1", {"is the input itself"}},
        {"in/s.####.png -o in/ --frames 1-2 --offset 1", {"is another input"}},
        {"in/s.####.png -o out/ --frames 1-", {"--frames", "'1-'"}},
        {"in/s.####.png -o out/ --frames 1 --offset 9223372036854775807", {"--offset"}},
        {"in/s.####.png -o out/ --frames 1,3 --save-settings dry", {"frames 3 are missing"}},
        {"in/s.####.png -o out/ --frames 1 --save-settings in/s.0001.png", {"is an input"}},
        {"in/s.####.png -o out/ --frames 1-100000000", {"more than 10000000"}},
        {"in/s.####.png -o out/ --frames 1,2 --mask m.#.png", {"--mask", "1-2 are missing"}},
    };
    for (const auto& [words, told] : wrong) ExpectError(run("smooth " + words), 2, told);
    EXPECT_FALSE(std::filesystem::exists(path("out")));
    EXPECT_FALSE(std::filesystem::exists(path("dry")));
}

TEST_F(SequenceTest, AReportReplacesNoPicture) {
    writeFrames({1, 2});
    const std::string frame = ReadText(path("in/s.0002.png"));
    ExpectError(run("report in/s.#.png -o in/s.0002.png"), 2, {"in/s.0002.png", "is an input"});
    EXPECT_EQ(ReadText(path("in/s.0002.png")), frame);
    ExpectError(run("report in/s.#.png -o nowhere/page.html"), 1, {"nowhere", "no such folder"});
}

/// A link that leads back to itself stands for a share that does not answer.
TEST_F(SequenceTest, AFolderThatCannotBeReachedIsNoEmptyOne) {
    std::filesystem::create_symlink("loop", path("loop"));
    ExpectError(run("smooth loop/s.####.png -o out/"), 1, {"loop", "cannot be read"});
}

TEST_F(SequenceTest, NamesInOtherEncodingsAreStillJson) {
    writeFrame("\x83\x41\xE3\x82\xA2.png", 12, 9);
    ExpectWords(run("smooth in/*.png -o out/ --progress json").output,
                {"{\"input\":\"in/\\ufffdA\xE3\x82\xA2.png\""});
}

TEST_F(SequenceTest, OutputsThatAreThereAreReplacedLeftOrRefused) {
    writeFrames({1, 2, 3});
    const std::string words = "smooth in/s.####.png -o out/ ";
    ASSERT_EQ(run(words + "--frames 1-2").status, 0);
    const std::string finished = ReadText(path("out/s.0001.png"));
    std::ofstream(path("out/s.0001.png")) << "old";
    ExpectError(run(words + "--no-clobber"), 2, {"out/s.0001.png", "1 others"});
    const CommandRun resumed = run(words + "--skip-existing --progress json");
    EXPECT_EQ(resumed.status, 0) << resumed.errors;
    ExpectWords(resumed.output, {R"({"done":1,"skipped":2,"failed":0,"total":3,)"});
    EXPECT_EQ(ReadText(path("out/s.0001.png")), "old");
    EXPECT_EQ(run(words + "--overwrite --progress openjd").output,
              "openjd_progress: 33.3\nopenjd_status: 1 of 3 done\n"
              "openjd_progress: 66.7\nopenjd_status: 2 of 3 done\n"
              "openjd_progress: 100.0\nopenjd_status: 3 of 3 done\n");
    EXPECT_EQ(ReadText(path("out/s.0001.png")), finished);
    std::ofstream(path("out/s.0001.png"), std::ios::trunc).close();  // as a placeholder
    EXPECT_EQ(run(words + "--skip-existing").status, 0);
    EXPECT_EQ(ReadText(path("out/s.0001.png")), finished);
    std::ofstream(path("in/s.0001.png")) << "no picture";
    const CommandRun stopped = run(words + "--fail-fast --jobs 1");
    EXPECT_EQ(stopped.status, 1);
    ExpectWords(stopped.errors, {"\nnevrel: 0 of 3 done, 1 failed"});
    ExpectWords(run(words + "--frames 2-3 --quiet --timings").errors,
                {"nevrel: in/s.0002.png: decode "});
}

/// Two outputs that a link makes one, and two whose places cannot be worked out.
TEST_F(SequenceTest, OutputsThatAreTheSameFileAreRefused) {
    for (const std::string name : {"1.png", "2.png"}) writeFrame(name);
    std::filesystem::create_directory(path("out"));
    std::filesystem::create_symlink("2.png", path("out/1.png"));
    ExpectError(run("smooth in/* -o out"), 2, {"out/2.png", "in/1.png", "in/2.png"});
    EXPECT_EQ(files("out"), std::vector<std::string>{"1.png"});
    std::filesystem::create_symlink("2.png", path("out/2.png"));
    std::filesystem::remove(path("out/1.png"));
    std::filesystem::create_symlink("1.png", path("out/1.png"));
    const CommandRun lost = run("smooth in/* -o out");
    EXPECT_EQ(lost.status, 1);
    EXPECT_EQ(std::count(lost.errors.begin(), lost.errors.end(), '\n'), 2) << lost.errors;
}

TEST_F(SequenceTest, AnInterruptTellsHowToGoOnAndLeavesNothingBehind) {
    for (int frame = 1; frame <= 40; ++frame) writeFrame(std::to_string(frame) + ".png", 600, 400);
    const CommandRun ended =
        run("smooth in/@.png -o out/ & "
            "until [ -e '" +
            path("out/1.png") + "' ]; do sleep 0.01; done; kill -TERM $!; wait $!");
    ExpectError(ended, 143, {"interrupted: ", " of 40 done", "--skip-existing"});
    for (const std::string signal : {"INT", "TERM", "KILL"}) {
        for (const std::string delay : {"0.02", "0.05", "0.1", "0.15", "0.2", "0.3", "0.4"}) {
            static_cast<void>(run("smooth in/@.png -o out --jobs 3",
                                  "rm -rf out; mkdir out; timeout -s " + signal + " " + delay));
            for (const std::string& name : files("out")) {
                EXPECT_TRUE(std::filesystem::exists(path("in/" + name))) << name << delay;
                EXPECT_EQ(ReadTestPicture(path("out/" + name)).spec.width, 600);
            }
        }
    }
}

}  // namespace
