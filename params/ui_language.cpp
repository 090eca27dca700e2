#include "params/ui_language.h"

#include "windows_stand_in/windows_api.h"

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// Packs the word at `text`, blanks before it skipped, and moves `text` to the word's end.
A_long ReadLanguageWord(const char*& text) {
    A_u_long code = 0;
    while (IsBlank(*text)) ++text;
    for (; *text != '\0' && !IsBlank(*text); ++text)
        code = code << 8 | static_cast<A_u_char>(Upper(*text));
    return static_cast<A_long>(code);
}

}  // namespace

A_long ParseLanguageOption(const char* commandLine) {
    A_long code = 0;
    bool afterBlank = false;
    for (const char* at = commandLine; *at != '\0';) {
        if (*at == '"') {
            do ++at;
            while (*at != '\0' && *at != '"');
        } else if (*at == '-' && afterBlank && Upper(at[1]) == 'L') {
            at += 2;
            code = ReadLanguageWord(at);
        }
        if (*at == '\0') break;
        afterBlank = IsBlank(*at);
        ++at;
    }
    return code;
}

A_long UiLanguage() {
    static const A_long code = ParseLanguageOption(GetCommandLineA());
    return code;
}
