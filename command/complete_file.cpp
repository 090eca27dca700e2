#include "command/complete_file.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <optional>
#include <set>
#include <span>
#include <string_view>

namespace nevrel {
namespace {

enum class ByteOrder { BigEndian, LittleEndian };

std::uint64_t Number(std::span<const unsigned char> bytes, ByteOrder order) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        number = number << 8 | bytes[order == ByteOrder::BigEndian ? i : bytes.size() - 1 - i];
    return number;
}

constexpr std::uint64_t kPngSignature = 8;

bool PngIsComplete(std::ifstream& file, std::uint64_t size) {
    std::uint64_t offset = kPngSignature;
    std::array<unsigned char, 8> head{};  // length and type of a chunk
    while (offset + head.size() <= size) {
        file.seekg(static_cast<std::streamoff>(offset));
        if (!file.read(reinterpret_cast<char*>(head.data()), head.size())) return false;
        offset += head.size() + Number(std::span(head).first(4), ByteOrder::BigEndian) +
                  4;  // 4: the chunk's check sum
        if (std::memcmp(head.data() + 4, "IEND", 4) == 0) return offset <= size;
    }
    return false;
}

/// The part of a DPX header that tells where the first image element lies and how large it is.
class DpxHeader {
  public:
    explicit DpxHeader(std::ifstream& file) {
        file.read(reinterpret_cast<char*>(bytes_.data()),
                  static_cast<std::streamsize>(bytes_.size()));
    }

    /// Whether a file of so many bytes holds all rows. Divides where a product of what the header
    /// says might not fit.
    [[nodiscard]] bool fits(std::uint64_t size) const {
        const std::uint64_t rowBits = word(kWidth) * components() * bits();
        const std::uint64_t rowBytes = (rowBits + 31) / 32 * 4;
        const std::uint64_t offset = word(kElementOffset);
        return offset <= size && (rowBytes == 0 || word(kHeight) <= (size - offset) / rowBytes);
    }
    [[nodiscard]] bool isRunLengthEncoded() const { return halfWord(kEncoding) == 1; }

  private:
    static constexpr std::size_t kWidth = 772, kHeight = 776, kDescriptor = 800, kBits = 803,
                                 kPacking = 804, kEncoding = 806, kElementOffset = 808;

    [[nodiscard]] std::uint64_t number(std::size_t at, std::size_t size) const {
        return Number(std::span(bytes_).subspan(at, size),
                      bytes_[0] == 'X' ? ByteOrder::LittleEndian : ByteOrder::BigEndian);
    }
    [[nodiscard]] std::uint64_t word(std::size_t at) const { return number(at, 4); }
    [[nodiscard]] std::uint64_t halfWord(std::size_t at) const { return number(at, 2); }
    [[nodiscard]] std::uint64_t components() const {
        switch (bytes_[kDescriptor]) {
            case 50:
                return 3;  // RGB
            case 51:
            case 52:
                return 4;  // RGBA, ABGR
            default:
                return 1;  // single channels; the least that others hold
        }
    }
    /// Bits of a component in the file; filled words hold three 10-bit components each, counted as
    /// the least.
    [[nodiscard]] std::uint64_t bits() const {
        return bytes_[kBits] == 12 && halfWord(kPacking) != 0 ? 16 : bytes_[kBits];
    }

    std::array<unsigned char, 816> bytes_{};
};

bool DpxIsComplete(std::ifstream& file, std::uint64_t size) {
    const DpxHeader header(file);
    return header.isRunLengthEncoded() || header.fits(size);
}

/// The directories of a TIFF, one for each page, linked by their places in the file.
class TiffDirectories {
  public:
    explicit TiffDirectories(std::ifstream& file) : file_(file) {
        order_ = file.get() == 'I' ? ByteOrder::LittleEndian : ByteOrder::BigEndian;
        isBig_ = number(2, 2) == 43;
    }

    /// A link to where no directory can be counts as one.
    [[nodiscard]] std::size_t count() {
        const std::uint64_t entrySize = isBig_ ? 20 : 12, countSize = isBig_ ? 8 : 2,
                            linkSize = isBig_ ? 8 : 4;
        std::set<std::uint64_t> places;  // a chain may lead back to its start
        auto place = number(linkSize, linkSize);
        while (place && *place != 0 && places.insert(*place).second) {
            const auto entries = number(*place, countSize);
            place = entries ? number(*place + countSize + *entries * entrySize, linkSize)
                            : std::nullopt;
        }
        return places.size();
    }

  private:
    /// Nothing beyond the end of the file.
    [[nodiscard]] std::optional<std::uint64_t> number(std::uint64_t at, std::size_t size) {
        std::array<unsigned char, 8> bytes{};
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(at));
        if (!file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
            return std::nullopt;
        return Number(std::span(bytes).first(size), order_);
    }

    std::ifstream& file_;
    ByteOrder order_{};
    bool isBig_ = false;
};

}  // namespace

bool IsComplete(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, 4> magic{};
    file.read(magic.data(), magic.size());
    file.clear();
    file.seekg(0);
    const std::uint64_t size = std::filesystem::file_size(path);
    const std::string_view start(magic.data(), magic.size());
    if (start == "\x89PNG") return PngIsComplete(file, size);
    if (start == "SDPX" || start == "XPDS") return DpxIsComplete(file, size);
    return true;
}

std::size_t CountTiffPages(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return TiffDirectories(file).count();
}

}  // namespace nevrel
