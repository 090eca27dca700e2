// The profile functions. Where the system has its own, the same cases show that the stand-in does
// as it does.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

#include <string>

#include "tests/temp_folder.h"
#include "windows_stand_in/system_text.h"

namespace {

constexpr int fallback = 77;

int Read(const std::string& file) {
    return static_cast<int>(GetPrivateProfileInt(TEXT("defaults"), TEXT("Bias"), fallback,
                                                 FromSystemCodePage(file.c_str()).c_str()));
}

bool Write(const std::string& file, const char* value) {
    return WritePrivateProfileString(TEXT("defaults"), TEXT("Bias"),
                                     FromSystemCodePage(value).c_str(),
                                     FromSystemCodePage(file.c_str()).c_str()) != 0;
}

TEST(Profile, ReadsIntegers) {
    const struct {
        std::string text;
        int expected;
    } cases[] = {
        {"[defaults]\r\nBias=12\r\n", 12},
        {"[DEFAULTS]\n\t bIaS \t=  12  \n", 12},
        {"[defaults]\n;Bias=1\n# note\n\nSoftness=3\nBias=12\nBias=13\n", 12},
        {"Bias=1\n[ui]\nBias=2\n[defaults]\nBias=12\n[more]\nBias=4\n", 12},
        {"[defaults]\nBias=-5\n", -5},
        {"[defaults]\nBias=+5\n", 5},
        {"[defaults]\nBias=-2147483648\n", -2147483647 - 1},
        {"[defaults]\nBias=12 percent\n", 12},
        {"[defaults]\nBias=much\n", 0},
        {"[defaults]\nBias=\n", fallback},
        {"[defaults]\nBiased=1\nBia=2\n", fallback},
        {"[defaults]\nSoftness=1\n[ui]\nBias=2\n[defaults]\nBias=3\n", fallback},
        {"[defaults\nBias=1\n", fallback},
        {std::string("\x7f"
                     "ELF\0\xff\xfe\n\0[",
                     10),
         fallback},
    };
    const TempFolder folder;
    int number = 0;
    for (const auto& c : cases) {
        // A file of its own for each: the system may keep an opened one in memory.
        const std::string file = folder.file("case" + std::to_string(++number) + ".ini");
        WriteText(file, c.text);
        EXPECT_EQ(Read(file), c.expected) << c.text;
    }
}

TEST(Profile, AFileThatIsNoFileDoesNoHarm) {
    const TempFolder folder;
    const std::string missing = folder.file("missing.ini");
    EXPECT_EQ(Read(missing), fallback);
    EXPECT_FALSE(std::filesystem::exists(missing));

    const std::string directory = folder.file("folder.ini");
    std::filesystem::create_directory(directory);
    EXPECT_EQ(Read(directory), fallback);
    EXPECT_FALSE(Write(directory, "1"));
    EXPECT_TRUE(std::filesystem::is_directory(directory));

#ifndef _WIN32
    const std::string pipe = folder.file("folder.ini/pipe.ini");  // a reader would wait for ever
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Read(pipe), fallback);
    EXPECT_FALSE(Write(pipe, "1"));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
#endif

    EXPECT_FALSE(Write(folder.file("no such folder/nevrel.ini"), "1"));
    EXPECT_EQ(NamesIn(folder.path()), std::vector<std::string>{"folder.ini"});
}

#ifndef _WIN32

TEST(ProfileFile, OnlyTheValueChanges) {
    const struct {
        std::string before;
        std::string after;
    } cases[] = {
        {"", "[defaults]\r\nBias=5\r\n"},
        {"; mine\r\n[ui]\r\nX=1", "; mine\r\n[ui]\r\nX=1\r\n[defaults]\r\nBias=5\r\n"},
        {"[Defaults]\n; one\nBIAS =\t70  \n; two\n", "[Defaults]\n; one\nBIAS =\t5  \n; two\n"},
        {"[defaults]\r\nBias=\r\nSoftness=1\n", "[defaults]\r\nBias=5\r\nSoftness=1\n"},
        {"[defaults]\nSoftness=1\n\n\n[ui]\nX=1\n",
         "[defaults]\nSoftness=1\nBias=5\n\n\n[ui]\nX=1\n"},
        {"[defaults]\n[ui]\nBias=1\n", "[defaults]\nBias=5\n[ui]\nBias=1\n"},
        {std::string("\0\xff[\n\0=", 6), std::string("\0\xff[\n\0=", 6) + "\n[defaults]\nBias=5\n"},
    };
    const TempFolder folder;
    const std::string file = folder.file("nevrel.ini");
    for (const auto& c : cases) {
        WriteText(file, c.before);
        EXPECT_TRUE(Write(file, "5"));
        EXPECT_EQ(ReadText(file), c.after) << c.before;
    }
}

TEST(ProfileFile, IsReplacedInOneStepOrStays) {
    const TempFolder folder;
    const std::string file = folder.file("nevrel.ini");
    const std::string link = folder.file("link.ini");
    WriteText(file, "[defaults]\nBias=1\n");
    constexpr auto permissions = static_cast<std::filesystem::perms>(0640);
    std::filesystem::permissions(file, permissions);
    std::filesystem::create_symlink(file, link);
    std::ifstream reader(file);  // somebody who is reading meanwhile sees the old file to its end
    EXPECT_TRUE(Write(link, "2"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "[defaults]\nBias=1\n");
    EXPECT_EQ(ReadText(file), "[defaults]\nBias=2\n");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(std::filesystem::status(file).permissions(), permissions);

    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{.rlim_cur = 10, .rlim_max = old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
    const bool written = Write(file, "3");
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &old), 0);
    EXPECT_FALSE(written);
    EXPECT_EQ(ReadText(file), "[defaults]\nBias=2\n");
    EXPECT_EQ(NamesIn(folder.path()), (std::vector<std::string>{"link.ini", "nevrel.ini"}));
}

#endif

}  // namespace
