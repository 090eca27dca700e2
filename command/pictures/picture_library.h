// The picture library, which knows all formats but comes with some 250 shared libraries: everything
// that uses it is a module of the command, which is loaded when it is needed.
#pragma once

#include <filesystem>
#include <string>

#include "command/files/memory_file.h"
#include "command/pictures/picture.h"

namespace nevrel {

class PictureLibrary {
  public:
    virtual ~PictureLibrary() = default;

    /// Lets it use so many threads for one picture.
    virtual void useThreads(int threads) const = 0;
    /// The format that the path's extension asks for; throws PictureError when it names none.
    [[nodiscard]] virtual std::string formatForPath(const std::filesystem::path& path) const = 0;
    /// As ReadPicture; `path` is a file that can be read.
    [[nodiscard]] virtual Picture read(const std::filesystem::path& path) const = 0;
    /// Encodes the picture in `picture.format`. Throws PictureError, naming `path`.
    virtual void encode(const Picture& picture, const std::filesystem::path& path,
                        const WriteSettings& settings, MemoryFile& encoded) const = 0;
    /// Whether all of the picture arrived in the file; throws PictureError, naming `path`.
    virtual void requireWhole(MemoryFile& encoded, const Picture& picture,
                              const std::filesystem::path& path) const = 0;
};

/// The loaded module, with one thread or as many as UseThreads says. Throws std::runtime_error when
/// it cannot be loaded.
[[nodiscard]] const PictureLibrary& TheLibrary();

/// How many threads the library has for one picture; not to be called while it is in use.
void UseThreads(int threads);

/// The module's only symbol, of type `const PictureLibrary*()`.
inline constexpr char librarySymbol[] = "NevrelPictureLibrary";

}  // namespace nevrel
