#include "command/pictures/png_details.h"

#include <algorithm>
#include <fstream>
#include <span>
#include <string_view>

#include "command/errors.h"
#include "command/pictures/file_numbers.h"

namespace nevrel {
namespace {

constexpr std::uint64_t signature = 8, checkSum = 4;

/// Whether a chunk holds true for changed samples: those known to, and others that say so by the
/// case of their last letter.
bool Outlives(std::string_view type) {
    constexpr std::array<std::string_view, 16> knownTypes{
        "bKGD", "cHRM", "cICP", "cLLI", "gAMA", "hIST", "iCCP", "mDCV",
        "pCAL", "pHYs", "sBIT", "sCAL", "sPLT", "sRGB", "sTER", "tIME"};
    const bool saysSo = (static_cast<unsigned char>(type[3]) & 0x20U) != 0;
    return saysSo || std::find(knownTypes.begin(), knownTypes.end(), type) != knownTypes.end();
}

bool IsAncillary(std::string_view type) {
    return (static_cast<unsigned char>(type[0]) & 0x20U) != 0;
}

class Reader {
  public:
    explicit Reader(const std::filesystem::path& path)
        : path_(path), file_(path, std::ios::binary), left_(std::filesystem::file_size(path)) {
        file_.seekg(signature);
        left_ -= std::min(left_, signature);
    }

    [[nodiscard]] PngDetails read() {
        for (std::string type; type != "IEND";) {
            const std::uint64_t size = Number(std::span<const std::byte>(bytes(4)), order);
            const std::vector<std::byte> name = bytes(4);
            type.assign(reinterpret_cast<const char*>(name.data()), name.size());
            take(type, size);
            skip(checkSum);
        }
        return std::move(details_);
    }

  private:
    static constexpr ByteOrder order = ByteOrder::BigEndian;

    void take(const std::string& type, std::uint64_t size) {
        if (type == "IDAT") place_ = PngChunk::Place::AfterPixels;
        if (type == "acTL") details_.isAnimated = true;
        if (type == "IHDR") {
            takeHeader(bytes(size));
        } else if (type == "PLTE") {
            takePalette(bytes(size));
            place_ = PngChunk::Place::BeforePixels;
        } else if (type == "tRNS") {
            takeAlpha(bytes(size));
        } else if (IsAncillary(type) && Outlives(type)) {
            details_.chunks.push_back({type, bytes(size), place_});
        } else {
            skip(size);
        }
    }

    void takeHeader(const std::vector<std::byte>& header) {
        constexpr std::size_t bitsAt = 8, colorTypeAt = 9;
        if (header.size() <= colorTypeAt) throw UnreadablePicture(path_, "damaged: a short header");
        details_.bits = std::to_integer<unsigned>(header[bitsAt]);
        details_.colorType = static_cast<PngColorType>(header[colorTypeAt]);
    }
    void takePalette(const std::vector<std::byte>& colors) {
        constexpr std::size_t mostBytes = std::size_t{256} * 3;
        details_.palette.clear();
        for (std::size_t i = 0; i + 2 < std::min(colors.size(), mostBytes); i += 3) {
            const auto value = [&](std::size_t c) {
                return std::to_integer<std::uint8_t>(colors[i + c]);
            };
            details_.palette.push_back({value(0), value(1), value(2), 255});
        }
    }
    void takeAlpha(const std::vector<std::byte>& alphas) {
        const std::size_t count = std::min(alphas.size(), details_.palette.size());
        for (std::size_t i = 0; i < count; ++i)
            details_.palette[i][3] = std::to_integer<std::uint8_t>(alphas[i]);
    }

    [[nodiscard]] std::vector<std::byte> bytes(std::uint64_t size) {
        use(size);
        std::vector<std::byte> data(size);
        if (!file_.read(reinterpret_cast<char*>(data.data()), static_cast<std::streamsize>(size)))
            throw UnreadablePicture(path_, "cannot be read");
        return data;
    }
    void skip(std::uint64_t size) {
        use(size);
        file_.seekg(static_cast<std::streamoff>(size), std::ios::cur);
    }
    void use(std::uint64_t size) {
        if (size > left_) throw UnreadablePicture(path_, "is truncated");
        left_ -= size;
    }

    const std::filesystem::path& path_;
    std::ifstream file_;
    std::uint64_t left_;  ///< bytes up to the end of the file
    PngChunk::Place place_ = PngChunk::Place::BeforePalette;
    PngDetails details_;
};

}  // namespace

std::optional<PngDetails> ReadPngDetails(const std::filesystem::path& path) {
    std::array<char, 4> start{};
    std::ifstream(path, std::ios::binary).read(start.data(), start.size());
    if (std::string_view(start.data(), start.size()) != "\x89PNG") return std::nullopt;
    return Reader(path).read();
}

}  // namespace nevrel
