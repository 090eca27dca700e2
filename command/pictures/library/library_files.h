// Files read and written by the picture library.
#pragma once

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <memory>
#include <string>

#include "command/files/memory_file.h"
#include "command/pictures/picture.h"

namespace nevrel {

/// The library's two readers of EXR.
enum class ExrReader {
    Complete,
    Quick,  ///< on OpenEXR's core: reads floats in half of the time, but not all compressions
};

/// Opens a file with the library, null where it cannot. All files are opened here, as the library
/// has one choice of the reader for the whole program.
[[nodiscard]] std::unique_ptr<OIIO::ImageInput> OpenWithLibrary(
    const std::string& name, const OIIO::ImageSpec* hints = nullptr,
    ExrReader exrReader = ExrReader::Complete);

/// As PictureLibrary's functions.
[[nodiscard]] std::string FormatByLibrary(const std::filesystem::path& path);
[[nodiscard]] Picture ReadWithLibrary(const std::filesystem::path& path);
void EncodeWithLibrary(const Picture& picture, const std::filesystem::path& path,
                       const WriteSettings& settings, MemoryFile& encoded);
void RequireWholeByLibrary(const std::string& encoded, const Picture& picture,
                           const std::filesystem::path& path);

}  // namespace nevrel
