#include "command/picture_error.h"

namespace nevrel {

std::string OneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n'))
        text.replace(end, 1, "; ");
    return text;
}

std::string Join(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) joined.append(joined.empty() ? "" : ", ").append(name);
    return joined;
}

}  // namespace nevrel
