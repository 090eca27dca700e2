// The profile functions: single values read from and written to an INI file whose other content is
// left alone.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "windows_stand_in/system.h"

namespace {

namespace fs = std::filesystem;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return text.substr(text.size());
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// The name in a line such as "[name]", or nothing.
std::optional<std::string_view> SectionName(std::string_view line) {
    const std::size_t close = line.rfind(']');
    if (!line.starts_with('[') || close == std::string_view::npos) return std::nullopt;
    return line.substr(1, close - 1);
}

/// Where a key's value stands in a text; when the key is missing, the empty place where its line
/// belongs.
struct ValuePlace {
    std::size_t begin;
    std::size_t size;
    bool hasSection;
    bool hasKey;
};

/// Looks in the first section of that name, as the system does. A missing key's line belongs behind
/// the section's last line that is not blank.
ValuePlace FindValue(std::string_view text, std::string_view section, std::string_view key) {
    ValuePlace place{text.size(), 0, false, false};
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t next = std::min(text.find('\n', pos), text.size() - 1) + 1;
        std::string_view line = text.substr(pos, next - pos);
        if (line.ends_with('\n')) line.remove_suffix(1);
        line = Trim(line);
        if (const auto name = SectionName(line)) {
            if (place.hasSection) break;
            place.hasSection = SameName(*name, section);
            if (place.hasSection) place.begin = next;
        } else if (place.hasSection && !line.empty()) {
            const std::size_t equals = line.find('=');
            if (equals != std::string_view::npos && SameName(Trim(line.substr(0, equals)), key)) {
                const std::string_view value = Trim(line.substr(equals + 1));
                return {static_cast<std::size_t>(value.data() - text.data()), value.size(), true,
                        true};
            }
            place.begin = next;
        }
        pos = next;
    }
    return place;
}

/// The line end that the text uses first; the system's own in a text without any.
std::string_view LineEnd(std::string_view text) {
    const std::size_t feed = text.find('\n');
    return feed == std::string_view::npos || (feed > 0 && text[feed - 1] == '\r') ? "\r\n" : "\n";
}

void SetValue(std::string& text, std::string_view section, std::string_view key,
              std::string_view value) {
    const ValuePlace place = FindValue(text, section, key);
    if (place.hasKey) {
        text.replace(place.begin, place.size, value);
        return;
    }
    const std::string lineEnd(LineEnd(text));
    std::string lines;
    if (place.begin > 0 && text[place.begin - 1] != '\n') lines += lineEnd;
    if (!place.hasSection) lines.append("[").append(section).append("]").append(lineEnd);
    lines.append(key).append("=").append(value).append(lineEnd);
    text.insert(place.begin, lines);
}

/// The whole of an ordinary file; nothing when it cannot be read or is not one (a folder, a device,
/// a pipe).
std::optional<std::string> ReadFile(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    std::FILE* file = std::fopen(path.c_str(), "rbe");
    if (file == nullptr) return std::nullopt;
    std::string text;
    char buffer[16384];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
        text.append(buffer, count);
    const bool whole = std::ferror(file) == 0;
    std::fclose(file);
    if (!whole) return std::nullopt;
    return text;
}

bool WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return ::fsync(descriptor) == 0;
}

/// Puts the text in the place of the file in one step, so that nobody ever sees half of it.
bool ReplaceFile(const fs::path& path, std::string_view text) {
    struct ::stat old {};
    const mode_t mode = ::stat(path.c_str(), &old) == 0 ? old.st_mode & 07777 : 0644;
    std::string temporary = path.string() + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) return false;
    bool done = ::fchmod(descriptor, mode) == 0 && WriteAll(descriptor, text);
    done = ::close(descriptor) == 0 && done;
    done = done && ::rename(temporary.c_str(), path.c_str()) == 0;
    if (!done) ::unlink(temporary.c_str());
    return done;
}

}  // namespace

unsigned GetPrivateProfileInt(LPCTSTR section, LPCTSTR key, int fallback, LPCTSTR file) {
    const std::optional<std::string> text = ReadFile(file);
    const ValuePlace place = text ? FindValue(*text, section, key) : ValuePlace{};
    if (place.size == 0) return static_cast<unsigned>(fallback);
    std::string_view digits = std::string_view(*text).substr(place.begin, place.size);
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) digits.remove_prefix(1);
    unsigned value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') break;
        value = value * 10 + static_cast<unsigned>(c - '0');
    }
    return negative ? 0 - value : value;
}

int WritePrivateProfileString(LPCTSTR section, LPCTSTR key, LPCTSTR value, LPCTSTR file) {
    // A link stays a link: what it points to is replaced.
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    const bool missing = error == std::errc::no_such_file_or_directory;
    if (error && !missing) return 0;
    std::optional<std::string> text = missing ? std::string() : ReadFile(real);
    if (!text) return 0;
    SetValue(*text, section, key, value);
    return ReplaceFile(missing ? fs::path(file) : real, *text) ? 1 : 0;
}
