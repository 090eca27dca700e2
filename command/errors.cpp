#include "command/errors.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace nevrel {

void ThrowSystemError(const std::filesystem::path& path, const std::string& what, int error) {
    constexpr std::array passing{ENOSPC,    EDQUOT,       EIO,         ESTALE, ENOTCONN, EHOSTDOWN,
                                 ETIMEDOUT, EHOSTUNREACH, ENETUNREACH, EMFILE, ENFILE};
    const std::string reason = what + ": " + std::strerror(error);
    if (std::find(passing.begin(), passing.end(), error) != passing.end())
        throw PassingError(path, reason);
    throw PictureError(path, reason);
}

std::string OneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n'))
        text.replace(end, 1, "; ");
    return text;
}

std::string Printable(std::string_view text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        // The control characters from U+0080 on take two bytes in UTF-8.
        const bool isLongControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        if (byte >= 0x20 && byte != 0x7F && !isLongControl) {
            printable += text[i];
            continue;
        }
        std::array<char, 5> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "\\x%02X", isLongControl ? next : byte);
        printable += escaped.data();
        i += isLongControl ? 1 : 0;
    }
    return printable;
}

std::string Join(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) joined.append(joined.empty() ? "" : ", ").append(name);
    return joined;
}

}  // namespace nevrel
