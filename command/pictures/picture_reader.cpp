#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include "command/errors.h"
#include "command/files/descriptor.h"
#include "command/files/memory_file.h"
#include "command/pictures/picture.h"
#include "command/pictures/picture_library.h"
#include "command/pictures/png_reader.h"
#include "command/pictures/zlib_calls.h"

namespace nevrel {
namespace {

void RequireRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) throw UnreadablePicture(path, "no such file");
    if (!std::filesystem::is_regular_file(status))
        throw UnreadablePicture(path, "is not a regular file");
}

/// What the file starts with: so many bytes, or fewer where it ends.
std::vector<std::byte> ReadStart(const Descriptor& file, std::size_t size,
                                 const std::filesystem::path& path) {
    std::vector<std::byte> bytes(size);
    std::size_t at = 0;
    while (at < size) {
        const ssize_t got =
            pread(file.number(), bytes.data() + at, size - at, static_cast<off_t>(at));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) ThrowSystemError(path, "cannot be read");
        if (got == 0) break;
        at += static_cast<std::size_t>(got);
    }
    bytes.resize(at);
    return bytes;
}

/// The library's reader of TIFF passes over strips that cannot be inflated; those of EXR do not.
Picture ReadWithLibrary(const std::filesystem::path& path) {
    const std::size_t before = InflateFailures();
    Picture picture = TheLibrary().read(path);
    if (picture.format == "tiff" && InflateFailures() != before)
        throw UnreadablePicture(path, "damaged or truncated: its samples cannot be inflated");
    return picture;
}

}  // namespace

Picture ReadPicture(const std::filesystem::path& path, const std::string& format) try {
    RequireRegularFile(path);
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) ThrowSystemError(path, "cannot be read");
    constexpr std::size_t signature = 8;
    if (!IsPng(ReadStart(file, signature, path))) return ReadWithLibrary(path);
    const auto bytes = ReadStart(file, std::filesystem::file_size(path), path);
    const auto chunks =
        SplitPng(bytes, path);  // also keeps what is truncated from the library, which leaks
    PngDetails details = PngDetailsOf(chunks, path);
    Picture picture{"png", {}, {}};
    if (format.empty() || format == "png") {
        picture.parts.push_back(ReadPngPart(bytes, chunks, details, path));
    } else {
        picture = ReadWithLibrary(path);
    }
    picture.png = std::move(details);
    return picture;
} catch (const std::bad_alloc&) {
    throw UnreadablePicture(path, "not enough memory for its pixels");
}

Picture ReadStandardInput(const std::string& format) {
    MemoryFile file;
    std::vector<std::byte> block(1 << 20);
    std::size_t size = 0;
    for (;;) {
        const ssize_t got = read(STDIN_FILENO, block.data(), block.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) ThrowSystemError(standardStream, "cannot be read");
        if (got == 0) break;
        file.set(size, std::span(block).first(static_cast<std::size_t>(got)));
        size += static_cast<std::size_t>(got);
    }
    if (size == 0) throw UnreadablePicture(standardStream, "the standard input is empty");
    try {
        return ReadPicture(file.path(), format);
    } catch (const UnreadablePicture& error) {
        std::string text = error.what();
        text.erase(0, file.path().size() + 2);  // the name and what divides it from the reason
        if (const std::size_t name = text.find(file.path()); name != std::string::npos)
            text.replace(name, file.path().size(), standardStream);
        throw UnreadablePicture(standardStream, text);
    }
}

std::string FormatForPath(const std::filesystem::path& path) {
    const std::filesystem::path extension = path.extension();
    const bool isPng = extension == ".png" || extension == ".PNG";
    return isPng ? "png" : TheLibrary().formatForPath(path);
}

}  // namespace nevrel
