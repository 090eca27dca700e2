// Texts in JSON.
#pragma once

#include <string>
#include <string_view>

namespace nevrel {

/// `text` as a JSON string, which may also stand in an HTML script. Bytes that are no UTF-8, such
/// as those of file names in another encoding, become U+FFFD.
[[nodiscard]] std::string JsonString(std::string_view text);

}  // namespace nevrel
