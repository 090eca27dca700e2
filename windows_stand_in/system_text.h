// Texts in the system's own encoding, which holds every file name; the system's code page does not.
#pragma once

#include <array>
#include <string>

#include "windows_stand_in/windows_api.h"

using SystemText = std::basic_string<TCHAR>;

/// The text of a code page's text; empty when that is longer than any path.
inline SystemText FromSystemCodePage(const char* text) {
#ifdef _WIN32
    std::array<TCHAR, MAX_PATH> wide{};
    const int size =
        MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
    return size == 0 ? SystemText() : SystemText(wide.data());
#else
    return text;
#endif
}
