// The language option, and ids without a text. The texts are held where they are shown.
#include <gtest/gtest.h>

#include "params/string_table.h"
#include "params/ui_language.h"

namespace {

TEST(LanguageOption, IsReadFromTheCommandLine) {
    const struct {
        const char* line;
        A_long code;
    } cases[] = {
        {"host -L JP", 0x4A50},
        {"host -Ljp", 0x4A50},
        {"host\t-l \t jp\tx", 0x4A50},
        {"host -L EN", 0x454E},
        {"host -L japanese", 0x4E455345},  // its last four letters
        {"host -L EN -L JP", 0x4A50},
        {"host -x -L JP", 0x4A50},
        {R"("C:\host.exe" -L JP)", 0x4A50},
        {"host -L \xE9", 0xE9},
        {"host -L JP -L", 0},
        {"host -L  ", 0},
        {"host -", 0},
        {"host \"a -L JP\"", 0},
        {"host \"a -L JP", 0},
        {"host \"\" -L JP", 0x4A50},
        {"host x-L JP", 0},
        {"host \"a\"-L JP", 0},
        {"-L JP", 0},
        {"host /L JP --L JP", 0},
        {"", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseLanguageOption(c.line), c.code) << c.line;
}

TEST(StringTable, GivesADashForWhatItDoesNotHave) {
    for (const A_long missing : {16, -1})
        EXPECT_STREQ(LookupString(static_cast<TextId>(missing)), "-");
}

}  // namespace
