#include "command/json.h"

#include <array>
#include <cstdio>

namespace nevrel {
namespace {

/// Bytes of the UTF-8 character that `text` begins with; 0 where it begins with none.
std::size_t CharacterSize(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first < 0xC2 || first > 0xF4) return 0;
    const std::size_t size = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (text.size() < size) return 0;
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) return 0;
    }
    const bool isOverlong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
    const bool isSurrogate = first == 0xED && byte(1) >= 0xA0;
    const bool isBeyond = first == 0xF4 && byte(1) >= 0x90;
    return isOverlong || isSurrogate || isBeyond ? 0 : size;
}

}  // namespace

std::string JsonString(std::string_view text) {
    std::string quoted = "\"";
    for (; !text.empty(); text.remove_prefix(1)) {
        const char c = text.front();
        const auto byte = static_cast<unsigned char>(c);
        const std::size_t size = CharacterSize(text);
        if (size == 0) {
            quoted += "\\ufffd";
        } else if (size > 1) {
            quoted += text.substr(0, size);
            text.remove_prefix(size - 1);
        } else if (c == '"' || c == '\\') {
            quoted += {'\\', c};
        } else if (byte < 0x20 || c == '<') {
            std::array<char, 8> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\u%04x", byte);
            quoted += escaped.data();
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

}  // namespace nevrel
