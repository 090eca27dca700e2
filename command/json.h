// Texts in JSON.
#pragma once

#include <string>
#include <string_view>

namespace nevrel {

/// `text` as a JSON string, which may also stand in an HTML script.
[[nodiscard]] std::string JsonString(std::string_view text);

}  // namespace nevrel
