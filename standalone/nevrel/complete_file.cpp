#include "standalone/nevrel/complete_file.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string_view>

namespace nevrel {
namespace {

std::uint32_t BigEndian(const unsigned char* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
           bytes[3];
}

constexpr std::uint64_t kPngSignature = 8;

bool PngIsComplete(std::ifstream& file, std::uint64_t size) {
    std::uint64_t offset = kPngSignature;
    std::array<unsigned char, 8> head{};  // length and type of a chunk
    while (offset + head.size() <= size) {
        file.seekg(static_cast<std::streamoff>(offset));
        if (!file.read(reinterpret_cast<char*>(head.data()), head.size())) return false;
        offset += head.size() + BigEndian(head.data()) + 4;  // 4: the chunk's check sum
        if (std::memcmp(head.data() + 4, "IEND", 4) == 0) return offset <= size;
    }
    return false;
}

/// The part of a DPX header that tells where the first image element lies and how large it is.
class DpxHeader {
  public:
    explicit DpxHeader(std::ifstream& file) {
        file.read(reinterpret_cast<char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
    }

    [[nodiscard]] std::uint64_t dataEnd() const {
        const std::uint64_t rowBits = std::uint64_t{word(kWidth)} * components() * bits();
        return std::uint64_t{word(kElementOffset)} + (rowBits + 31) / 32 * 4 * word(kHeight);
    }
    [[nodiscard]] bool isRunLengthEncoded() const { return halfWord(kEncoding) == 1; }

  private:
    static constexpr std::size_t kWidth = 772, kHeight = 776, kDescriptor = 800, kBits = 803, kPacking = 804,
                                 kEncoding = 806, kElementOffset = 808;

    [[nodiscard]] bool littleEndian() const { return bytes_[0] == 'X'; }
    [[nodiscard]] std::uint32_t word(std::size_t at) const {
        const std::uint32_t value = BigEndian(&bytes_[at]);
        return littleEndian() ? value >> 24 | (value >> 8 & 0xFF00U) | (value << 8 & 0xFF0000U) | value << 24
                              : value;
    }
    [[nodiscard]] std::uint32_t halfWord(std::size_t at) const {
        return littleEndian() ? bytes_[at] | std::uint32_t{bytes_[at + 1]} << 8
                              : bytes_[at + 1] | std::uint32_t{bytes_[at]} << 8;
    }
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
    /// Bits of a component in the file; filled words hold three 10-bit components each, counted as the least.
    [[nodiscard]] std::uint64_t bits() const {
        return bytes_[kBits] == 12 && halfWord(kPacking) != 0 ? 16 : bytes_[kBits];
    }

    std::array<unsigned char, 816> bytes_{};
};

bool DpxIsComplete(std::ifstream& file, std::uint64_t size) {
    const DpxHeader header(file);
    return header.isRunLengthEncoded() || header.dataEnd() <= size;
}

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

}  // namespace nevrel
