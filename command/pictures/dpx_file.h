// The pixels of DPX files. The picture library reads and writes their headers, but knows no rows
// that end on a 32-bit boundary, cuts off filled rows of four channels, and does not widen filled
// 12-bit samples to what they stand for.
#pragma once

#include <filesystem>
#include <string>

#include "command/files/memory_file.h"
#include "command/pictures/dpx_row.h"
#include "command/pictures/picture.h"

namespace nevrel {

/// Where a DPX holds its picture.
class DpxFile {
  public:
    /// Throws UnreadablePicture: truncated, of a kind that is not supported, or of a size that does
    /// not tell how its rows are stored.
    explicit DpxFile(const std::filesystem::path& path);

    /// Whether every sample fills words of its own, as the picture library reads them well.
    [[nodiscard]] bool isWordwise() const { return bits_ >= 32; }
    [[nodiscard]] ByteOrder order() const { return order_; }
    /// Fills the part, which has the picture's size and channels, with the file's samples. Throws
    /// UnreadablePicture.
    void read(Part& part) const;

  private:
    [[nodiscard]] DpxRow row() const { return {order_, bits_, packing_, width_, channels_}; }
    void findRowSize(std::uint64_t actualSize, std::uint64_t declaredSize);
    void requireAlignedWithin(std::uint64_t actualSize, std::uint64_t rowSize) const;
    void requireSupported(unsigned descriptor, bool isRunLengthEncoded, unsigned elements) const;

    std::filesystem::path path_;
    ByteOrder order_{};
    unsigned bits_ = 0;
    DpxPacking packing_{};
    std::size_t width_ = 0, height_ = 0, channels_ = 0;
    std::uint64_t offset_ = 0, rowPadding_ = 0, imagePadding_ = 0, rowSize_ = 0;
};

/// Lays the part's 8-bit or 16-bit samples anew into a DPX that the picture library made of it:
/// packed or filled as `packingName` says, each row padded to 32 bits, and the header
/// telling so. Throws std::system_error.
void LayDpxRows(const Part& part, const std::string& packingName, MemoryFile& file);

}  // namespace nevrel
