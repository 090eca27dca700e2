#include "windows_stand_in/system.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace {

std::string Environment(const char* name) {
    const char* value =
        std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing here changes the environment
    return value == nullptr ? "" : value;
}

/// One argument as it stands on a command line.
std::string Quoted(std::string_view argument) {
    if (!argument.empty() && argument.find_first_of(" \t\"") == std::string_view::npos)
        return std::string(argument);
    std::string quoted = "\"";
    for (const char c : argument) {
        if (c == '"') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

std::string ReadCommandLine() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::string line;
    for (std::string argument; std::getline(file, argument, '\0');) {
        if (!line.empty()) line += ' ';
        line += Quoted(argument);
    }
    return line;
}

}  // namespace

const char* GetCommandLineA() {
    static const std::string commandLine = ReadCommandLine();
    return commandLine.c_str();
}

int _getmbcp() {  // NOLINT(bugprone-reserved-identifier): the runtime's name
    std::string locale;
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (locale.empty()) locale = Environment(name);
    }
    return locale.starts_with("ja") ? 932 : 0;
}

short GetKeyState(int virtualKey) {
    const std::string shift = Environment("NEVREL_SHIFT");
    return virtualKey == VK_SHIFT && !shift.empty() && shift != "0" ? short{-1} : short{0};
}

DWORD GetFileAttributes(LPCTSTR path) {
    constexpr DWORD normal = 0x80;
    return ::access(path, F_OK) == 0 ? normal : INVALID_FILE_ATTRIBUTES;
}
