#include <unistd.h>

#include <new>
#include <span>
#include <system_error>

#include "command/errors.h"
#include "command/files/memory_file.h"
#include "command/files/replace_file.h"
#include "command/pictures/format_limits.h"
#include "command/pictures/picture.h"
#include "command/pictures/picture_library.h"
#include "command/pictures/png_writer.h"

namespace nevrel {

bool StoresAssociated(const std::string& format, const std::string& from, const Part& part) {
    if (format == "openexr") return true;
    return part.associated && (format == "tiff" || (format == "targa" && from == "targa"));
}

bool HoldsGreyWithAlpha(const std::string& format) {
    return format == "png" || format == "tiff" || format == "openexr";
}

namespace {

void Encode(const Picture& picture, const std::filesystem::path& path,
            const WriteSettings& settings, MemoryFile& encoded, Remarks& remarks) {
    if (picture.format != "png") {
        TheLibrary().encode(picture, path, settings, encoded);
        return;
    }
    RequireHolds({}, picture, path);
    EncodePng(picture, path, settings, encoded, remarks);
}

/// Reads the whole file back.
void RequireSound(std::span<const std::byte> png, const std::filesystem::path& path) {
    for (const PngChunkView& chunk : SplitPng(png, path)) {
        if (!chunk.isSound()) throw UnreadablePicture(path, "damaged");
    }
}

/// Writers leave out channels that they have no place for, and may not notice that a write failed.
void RequireWhole(MemoryFile& encoded, const Picture& picture,
                  const std::filesystem::path& path) try {
    if (picture.format == "png") {  // its encoder leaves nothing out and tells of failed writes
        RequireSound(encoded.bytes(), path);
    } else {
        TheLibrary().requireWhole(encoded, picture, path);
    }
} catch (const UnreadablePicture&) {
    throw PictureError(path, "cannot be encoded whole; is there a limit to file size or memory?");
}

}  // namespace

void WritePicture(const Picture& picture, const std::filesystem::path& path,
                  const WriteSettings& settings, Remarks& remarks) try {
    MemoryFile encoded;  // a writer's own reports of a full disk are not to be relied on
    remarks.times.measure(Stage::Encode,
                          [&] { Encode(picture, path, settings, encoded, remarks); });
    remarks.times.measure(Stage::Check, [&] { RequireWhole(encoded, picture, path); });
    remarks.times.measure(Stage::Write, [&] {
        if (path == standardStream) {
            WriteAll(STDOUT_FILENO, encoded.bytes(), path);
        } else {
            ReplaceFile(path, encoded.bytes());
        }
    });
} catch (const std::bad_alloc&) {
    throw PictureError(path, "not enough memory to encode the picture");
} catch (const std::system_error& error) {
    throw PictureError(path, error.what());
}

}  // namespace nevrel
