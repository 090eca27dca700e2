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

namespace nevrel {
namespace {

void RequireRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) throw UnreadablePicture(path, "no such file");
    if (!std::filesystem::is_regular_file(status))
        throw UnreadablePicture(path, "is not a regular file");
}

}  // namespace

Picture ReadPicture(const std::filesystem::path& path, const std::string& format) try {
    RequireRegularFile(path);
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) ThrowSystemError(path, "cannot be read");
    auto png = ReadPngDetails(path);  // also keeps what is truncated from the library, which leaks
    const bool staysPng = png && (format.empty() || format == "png");
    Picture picture{"png", {}, {}};
    if (staysPng) {
        picture.parts.push_back(ReadPngPart(path, *png));
    } else {
        picture = TheLibrary().read(path);
    }
    picture.png = std::move(png);
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
    return path.extension() == ".png" ? "png" : TheLibrary().formatForPath(path);
}

}  // namespace nevrel
