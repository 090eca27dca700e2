// Texts and the choice of their language. The process's own language is what NEVREL_EXPECTED_LANGUAGE says
// ("ja"; anything else is English).
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "params/string_table.h"
#include "params/ui_language.h"

namespace {

bool ExpectsJapanese() {
    const char* language = std::getenv("NEVREL_EXPECTED_LANGUAGE");
    return language != nullptr && std::string(language) == "ja";
}

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
        {"\"C:\\host.exe\" -L JP", 0x4A50},
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

// The first use of the language, on several threads at once.
TEST(StringTable, EveryThreadGetsTheSameLanguage) {
    std::vector<const char*> texts(8);
    std::vector<std::thread> threads;
    for (const char*& text : texts)
        threads.emplace_back([&] { text = LookupString(TextId::GroupParameters); });
    for (std::thread& thread : threads) thread.join();
    for (const char* text : texts) EXPECT_EQ(text, texts.front());
}

TEST(StringTable, GivesTheTextsOfTheLanguage) {
    const struct {
        A_long id;
        const char* english;
        const char* japanese;
    } cases[] = {
        {0, "nevrel", "nevrel"},
        {2, "color threshold", "color threshold"},
        {3, "softness", "softness"},
        {4, "color key enable", "color key enable"},
        {5, "", ""},
        {6, "key color", "key color"},
        {7, "color key", "color key"},
        {8, "color key threshold", "color key threshold"},
        {9, "invert", "invert"},
        {10, "", ""},
        {11, "bias", "bias"},
        {12, "Settings (Valid from next start-up)",
         "\220\335\222\350 "
         "\201i\216\237\211\361\213N\223\256\202\251\202\347\227L\214\370\202\311\202\310\202\350\202"
         "\334\202\267\201j"},
        {13, "Group color key parameters",
         "\203J\203\211\201[\203L\201[\212\326\230A\202\314\203p\203\211\203\201\201[\203^"
         "\202\360\212K\221w\211\273"
         "\202\267\202\351"},
        {14, "Set current parameter values to default",
         "\214\273\215\335\202\314\203p\203\211\203\201\201[\203^"
         "\220\335\222\350\202\360\203f\203t\203H\203\213\203g"
         "\222l\202\306\202\265\202\304\213L\211\257\202\267\202\351"},
        {15, "Restore initial default parameter values",
         "\203p\203\211\203\201\201[\203^"
         "\202\314\203f\203t\203H\203\213\203g\222l\220\335\222\350\202\360\217\211\212"
         "\372\217\363\221\324\202\311\225\234\213A\202\267\202\351"},
        {16, "-", "-"},
        {-1, "-", "-"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(LookupString(static_cast<TextId>(c.id)), ExpectsJapanese() ? c.japanese : c.english)
            << c.id;
    }
    EXPECT_NE(std::string(LookupString(TextId::Copyright)).find("nevrel"), std::string::npos);
}

}  // namespace
