// The encoder of PNG files.
#pragma once

#include <spng.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "command/files/memory_file.h"
#include "command/pictures/picture.h"
#include "command/pictures/png_details.h"

namespace nevrel {

/// How hard the encoder tries: more of both makes smaller files, slower.
struct PngEffort {
    int level = 3;  ///< of compression, 0 to 9
    int filters = SPNG_DISABLE_FILTERING;
};

/// Writes one PNG, whose parts are set before its pixels are written. Its functions throw
/// PictureError, naming `path`, std::bad_alloc and std::system_error.
class PngEncoder {
  public:
    PngEncoder(const std::filesystem::path& path, MemoryFile& file, const PngEffort& effort);

    void setHeader(const PartSpec& spec, PngColorType type, unsigned bits);
    void setPalette(const std::vector<PngColor>& colors);
    /// The chunks must live until the pixels are written.
    void setChunks(std::vector<PngChunk>& chunks);
    /// Profile, gamma, resolution, date and texts of a picture that was no PNG.
    void setMetadata(const Metadata& metadata);
    /// Rows without gaps, 16-bit samples in the machine's own order, and the end of the file.
    void writePixels(std::span<const std::byte> pixels);

  private:
    static int Write(spng_ctx* context, void* self, void* bytes, std::size_t size);

    void setProfile(const Metadata& metadata);
    void setResolution(const Metadata& metadata);
    void setDate(const std::string& date);
    void setTexts(const Metadata& metadata);
    void addText(const std::string& keyword, const std::string& value);
    void require(int result) const;

    const std::filesystem::path& path_;
    MemoryFile& file_;
    std::size_t size_ = 0;
    std::error_code failure_;
    // What the library takes by reference.
    std::vector<spng_unknown_chunk> chunkList_;
    std::vector<char> profile_;
    std::vector<spng_text> texts_;
    std::vector<std::string> textValues_;
    std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)> context_;
};

}  // namespace nevrel
