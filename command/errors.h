// How the command reports what went wrong.
#pragma once

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nevrel {

/// A picture that could not be read, smoothed or written; the text is one line and names the file.
class PictureError : public std::runtime_error {
  public:
    PictureError(const std::filesystem::path& path, const std::string& reason)
        : std::runtime_error(path.string() + ": " + reason) {}
};

/// The kind of it that a file which is no whole picture gives.
class UnreadablePicture : public PictureError {
  public:
    using PictureError::PictureError;
};

/// The kind of it that may pass: a full disk, a share that is away.
class PassingError : public PictureError {
  public:
    using PictureError::PictureError;
};

/// Throws the picture error for what the system reported, last in `errno`.
[[noreturn]] void ThrowSystemError(const std::filesystem::path& path, const std::string& what,
                                   int error = errno);

/// Wrong usage of the command; the text is one line and names the option.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// `text` as one line: library messages may have several.
[[nodiscard]] std::string OneLine(std::string text);

/// `text` with control characters written out, as \x1B for the escape character, so that no file
/// name can command a terminal.
[[nodiscard]] std::string Printable(std::string_view text);

/// The names with commas between them.
[[nodiscard]] std::string Join(const std::vector<std::string>& names);

}  // namespace nevrel
