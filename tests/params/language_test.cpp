// Texts and the choice of their language. The process's own language is what
// NEVREL_EXPECTED_LANGUAGE says
// ("ja"; anything else is English).
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#endif

#include <cstdlib>
#include <string>
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

/// A text of code page 932 in UTF-8.
std::string FromCodePage932(const std::string& text) {
    std::string utf8(4 * text.size() + 1, '\0');
#ifdef _WIN32
    std::vector<wchar_t> wide(utf8.size());
    MultiByteToWideChar(932, MB_ERR_INVALID_CHARS, text.c_str(), -1, wide.data(),
                        static_cast<int>(wide.size()));
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), -1, utf8.data(), static_cast<int>(utf8.size()),
                        nullptr, nullptr);
#else
    iconv_t converter = iconv_open("UTF-8", "CP932");
    std::string source = text;
    char* from = source.data();
    char* to = utf8.data();
    std::size_t fromLeft = source.size(), toLeft = utf8.size();
    iconv(converter, &from, &fromLeft, &to, &toLeft);
    iconv_close(converter);
#endif
    return utf8.substr(0, utf8.find('\0'));
}

// The parameter names and the texts of the about box are held where they are shown.
TEST(StringTable, GivesTheTextsOfTheLanguage) {
    const struct {
        TextId id;
        const char* english;
        const char* japanese;
    } twoTexts[] = {
        {TextId::Settings, "Settings (Valid from next start-up)",
         "設定 （次回起動から有効になります）"},
        {TextId::GroupParameters, "Group color key parameters",
         "カラーキー関連のパラメータを階層化する"},
        {TextId::StoreDefaults, "Set current parameter values to default",
         "現在のパラメータ設定をデフォルト値として記憶する"},
        {TextId::RestoreDefaults, "Restore initial default parameter values",
         "パラメータのデフォルト値設定を初期状態に復帰する"},
    };
    for (const auto& c : twoTexts)
        EXPECT_EQ(FromCodePage932(LookupString(c.id)), ExpectsJapanese() ? c.japanese : c.english);
    for (const A_long missing : {16, -1})
        EXPECT_STREQ(LookupString(static_cast<TextId>(missing)), "-");
}

}  // namespace
