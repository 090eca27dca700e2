#include "command/terminal_dialog.h"

#include <iconv.h>

#include <istream>
#include <optional>
#include <ostream>
#include <string>

namespace nevrel {
namespace {

DWORD TypeOf(const Window& control) { return control.style & BS_TYPEMASK; }

/// The controls that take clicks, in the order in which they are shown: pages lie above the
/// dialog's own.
void CollectChoices(const Window& dialog, std::vector<const Window*>& choices) {
    for (const auto& child : dialog.children) {
        if (child->procedure != nullptr) CollectChoices(*child, choices);
    }
    for (const auto& child : dialog.children) {
        if (child->procedure == nullptr && TypeOf(*child) != BS_GROUPBOX)
            choices.push_back(child.get());
    }
}

/// Effects speak code page 932, of which ASCII is a part; terminals UTF-8.
std::string Utf8(std::string text) {
    iconv_t converter = iconv_open("UTF-8", "CP932");
    // iconv's own mark of failure
    if (converter == reinterpret_cast<iconv_t>(-1)) return text;
    std::string converted(3 * text.size(), '\0');
    char* in = text.data();
    char* out = converted.data();
    std::size_t inLeft = text.size();
    std::size_t outLeft = converted.size();
    const bool failed =
        iconv(converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1);
    iconv_close(converter);
    if (failed) return text;
    converted.resize(converted.size() - outLeft);
    return converted;
}

std::string Headings(const Window& dialog) {
    std::string text;
    for (const auto& child : dialog.children) {
        if (child->procedure != nullptr) text += Headings(*child);
        if (child->procedure == nullptr && TypeOf(*child) == BS_GROUPBOX)
            text += Utf8(child->text) + "\n";
    }
    return text;
}

std::string Describe(const Window& control) {
    const std::string box = TypeOf(control) != BS_AUTOCHECKBOX ? ""
                            : control.checked                  ? "[x] "
                                                               : "[ ] ";
    return box + Utf8(control.text) + (control.enabled ? "" : " (not available)");
}

/// A number from 1 to `count`, blanks around it allowed.
std::optional<std::size_t> Number(const std::string& line, std::size_t count) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    const std::size_t last = line.find_last_not_of(" \t\r");
    if (first == std::string::npos) return {};
    const std::string word = line.substr(first, last - first + 1);
    for (std::size_t number = 1; number <= count; ++number) {
        if (word == std::to_string(number)) return number;
    }
    return {};
}

}  // namespace

UserAction TerminalDialog::nextAction(const Window& dialog) {
    hasShown_ = true;
    std::vector<const Window*> choices;
    CollectChoices(dialog, choices);
    output_ << Utf8(dialog.text) << "\n" << Headings(dialog);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        output_ << "  " << i + 1 << "  " << Describe(*choices[i]) << "\n";
    }
    for (std::string line;;) {
        output_ << "> " << std::flush;
        if (!std::getline(input_, line)) {
            output_ << "\n";
            return {UserActionKind::CloseBox};
        }
        const auto number = Number(line, choices.size());
        if (number && choices[*number - 1]->enabled)
            return {UserActionKind::Click, choices[*number - 1]->id};
        output_ << "Choose one of the numbers.\n";
    }
}

}  // namespace nevrel
