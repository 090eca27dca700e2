#include "command/json.h"

#include <array>
#include <cstdio>

namespace nevrel {

std::string JsonString(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
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
