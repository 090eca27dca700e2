// The command where the system lets it down.
#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

namespace {

/// Adds the library that takes unnamed files away, whatever sanitizer there is.
const std::string namedFilesOnly =
    "ASAN_OPTIONS=$ASAN_OPTIONS:verify_asan_link_order=0 LD_PRELOAD='" +
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

}  // namespace
