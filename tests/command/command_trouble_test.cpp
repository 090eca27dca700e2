// The command where the system lets it down.
#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

namespace {

/// Adds the library that takes unnamed files away, whatever sanitizer there is.
const std::string namedFilesOnly = "ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD='" +
                                   std::filesystem::absolute(NO_UNNAMED_FILES).string() + "' ";

class TroubleTest : public CommandTest {
  protected:
    TroubleTest() {
        for (const std::string name : {"1.png", "2.png"}) WriteNoise(path(name), 200, 150, 3);
    }
};

/// On a file system of 16 KB, which only the command and what shows it afterwards see.
TEST_F(TroubleTest, AFullDiskLeavesWhatWasThere) {
    const std::string alone = "unshare --map-root-user --mount ";
    if (std::system((alone + "true").c_str()) != 0) GTEST_SKIP() << "this user may mount nothing";
    std::filesystem::create_directory(path("disk"));
    const std::string onTinyDisk =
        alone +
        "sh -c 'mount -t tmpfs -o size=16k tiny disk && echo old >disk/old.png && \"$@\"; "
        "status=$?; ls -A disk; cat disk/old.png; exit $status' sh";
    for (const std::string& before : {std::string(), namedFilesOnly}) {
        for (const std::string output : {"disk/new.png", "disk/old.png"}) {
            const CommandRun result = run("smooth 1.png -o " + output, before + onTinyDisk);
            ExpectError(result, 75, {output, "No space left"});
            EXPECT_EQ(result.output, "old.png\nold\n");
        }
    }
}

TEST_F(TroubleTest, FilesAreTheSameWithoutUnnamedOnes) {
    ASSERT_EQ(run("smooth 1.png -o as_ever.png").status, 0);
    std::ofstream(path("replaced.png")) << "old";
    for (const std::string output : {"new.png", "replaced.png"}) {
        ASSERT_EQ(run("smooth 1.png -o " + output, namedFilesOnly).status, 0);
        EXPECT_TRUE(ReadText(path(output)) == ReadText(path("as_ever.png")));
    }
    EXPECT_EQ(files(), (std::vector<std::string>{"1.png", "2.png", "as_ever.png", "new.png",
                                                 "replaced.png"}));
}

TEST_F(TroubleTest, AReaderOfTheErrorsThatIsGoneStopsNothing) {
    const std::string reader = "mkfifo ../gone; exec 4<>../gone 3>../gone 4<&-;";
    EXPECT_EQ(run("smooth missing.png 1.png 2.png -o out/ --jobs 1 2>&3", reader).status, 1);
    EXPECT_EQ(files("out"), (std::vector<std::string>{"1.png", "2.png"}));
}

/// The header speaks of more pixels than any memory holds.
TEST_F(TroubleTest, HugeHeadersAreErrors) {
    const struct {
        std::string name;
        std::streamoff size;  // where the header has width and height
        std::string huge;
    } files[] = {{"huge.tga", 12, "\xFF\xFF\xFF\xFF"},
                 {"huge.bmp", 18, "\xFF\xFF\xFF\x3F\xFF\xFF\xFF\x3F"}};
    for (const auto& [name, size, huge] : files) {
        WriteTestPicture(path(name), MakePictureFor(name, 16, 16, 3));
        std::fstream(path(name), std::ios::in | std::ios::out | std::ios::binary).seekp(size)
            << huge;
        ExpectError(run("smooth " + name + " -o out.png"), 1, {name});
    }
}

/// The names of their places cannot be worked out, so they tell nothing about each other.
TEST_F(TroubleTest, OutputsThatCannotBeFoundAreNotTakenForOne) {
    std::filesystem::create_directory(path("out"));
    for (const std::string name : {"1.png", "2.png"})
        std::filesystem::create_symlink(name, path("out/" + name));
    const CommandRun result = run("smooth 1.png 2.png -o out");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 2) << result.errors;
}

}  // namespace
