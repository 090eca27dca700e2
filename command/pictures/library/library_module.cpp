// What the module with the picture library exports.
#include <OpenImageIO/imageio.h>

#include <algorithm>

#include "command/pictures/library/library_files.h"
#include "command/pictures/picture_library.h"

namespace nevrel {
namespace {

class Library : public PictureLibrary {
  public:
    void useThreads(int threads) const override {
        // Fewer than three would let TIFFs be packed by zlib, row after row, and to other bytes.
        OIIO::attribute("threads", std::max(threads, 3));
        OIIO::attribute("tiff:multithread", 0);  // its threads tell nobody of damaged strips
        OIIO::attribute("exr_threads",
                        threads > 1 ? threads : -1);  // a pool of one would be one thread too many
    }
    [[nodiscard]] std::string formatForPath(const std::filesystem::path& path) const override {
        return FormatByLibrary(path);
    }
    [[nodiscard]] Picture read(const std::filesystem::path& path) const override {
        return ReadWithLibrary(path);
    }
    void encode(const Picture& picture, const std::filesystem::path& path,
                const WriteSettings& settings, MemoryFile& encoded) const override {
        EncodeWithLibrary(picture, path, settings, encoded);
    }
    void requireWhole(MemoryFile& encoded, const Picture& picture,
                      const std::filesystem::path& path) const override {
        RequireWholeByLibrary(encoded.path(), picture, path);
    }
};

}  // namespace
}  // namespace nevrel

extern "C" [[gnu::visibility("default")]] const nevrel::PictureLibrary* NevrelPictureLibrary() {
    static const nevrel::Library library;
    return &library;
}
