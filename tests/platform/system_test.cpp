// The stand-ins for what the system knows of this process.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/platform.h"

namespace {

TEST(System, CodePageFollowsTheLocale) {
    const struct {
        const char* all;
        const char* ctype;
        const char* lang;
        int expected;
    } cases[] = {
        {"", "", "ja_JP.UTF-8", 932}, {"", "ja_JP", "C", 932}, {"ja_JP.UTF-8", "C", "C", 932},
        {"C", "", "ja_JP.UTF-8", 0},  {"", "", "", 0},         {"", "", "en_US.UTF-8", 0},
    };
    for (const auto& c : cases) {
        setenv("LC_ALL", c.all, 1);
        setenv("LC_CTYPE", c.ctype, 1);
        setenv("LANG", c.lang, 1);
        EXPECT_EQ(_getmbcp(), c.expected) << c.all << "," << c.ctype << "," << c.lang;
    }
}

TEST(System, ShiftFollowsItsVariable) {
    unsetenv("NEVREL_SHIFT");
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    setenv("NEVREL_SHIFT", "0", 1);
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    setenv("NEVREL_SHIFT", "1", 1);
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    EXPECT_GE(GetKeyState(VK_SHIFT + 1), 0);
}

TEST(System, CommandLineStartsWithTheProgram) {
    EXPECT_NE(std::string(GetCommandLineA()).find("system_test"), std::string::npos);
}

}  // namespace
