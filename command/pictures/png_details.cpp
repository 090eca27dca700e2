#include "command/pictures/png_details.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "command/errors.h"
#include "command/pictures/file_numbers.h"

namespace nevrel {
namespace {

constexpr std::size_t signature = 8;

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

class Details {
  public:
    explicit Details(const std::filesystem::path& path) : path_(path) {}

    void take(const PngChunkView& chunk) {
        const std::string_view type = chunk.type();
        const auto data = chunk.data();
        if (type == "IDAT") place_ = PngChunk::Place::AfterPixels;
        if (type == "acTL") details_.isAnimated = true;
        if (type == "IHDR") {
            takeHeader(data);
        } else if (type == "PLTE") {
            takePalette(data);
            place_ = PngChunk::Place::BeforePixels;
        } else if (type == "tRNS") {
            takeAlpha(data);
        } else if (IsAncillary(type) && Outlives(type)) {
            details_.chunks.push_back({std::string(type), {data.begin(), data.end()}, place_});
        }
    }
    [[nodiscard]] PngDetails result() { return std::move(details_); }

  private:
    void takeHeader(std::span<const std::byte> header) {
        constexpr std::size_t bitsAt = 8, colorTypeAt = 9;
        if (header.size() <= colorTypeAt) throw UnreadablePicture(path_, "damaged: a short header");
        details_.bits = std::to_integer<unsigned>(header[bitsAt]);
        details_.colorType = static_cast<PngColorType>(header[colorTypeAt]);
    }
    void takePalette(std::span<const std::byte> colors) {
        constexpr std::size_t mostBytes = std::size_t{256} * 3;
        details_.palette.clear();
        for (std::size_t i = 0; i + 2 < std::min(colors.size(), mostBytes); i += 3) {
            const auto value = [&](std::size_t c) {
                return std::to_integer<std::uint8_t>(colors[i + c]);
            };
            details_.palette.push_back({value(0), value(1), value(2), 255});
        }
    }
    void takeAlpha(std::span<const std::byte> alphas) {
        const std::size_t count = std::min(alphas.size(), details_.palette.size());
        for (std::size_t i = 0; i < count; ++i)
            details_.palette[i][3] = std::to_integer<std::uint8_t>(alphas[i]);
    }

    const std::filesystem::path& path_;
    PngChunk::Place place_ = PngChunk::Place::BeforePalette;
    PngDetails details_;
};

}  // namespace

bool IsPng(std::span<const std::byte> file) {
    constexpr std::string_view start = "\x89PNG";
    return file.size() >= start.size() && std::memcmp(file.data(), start.data(), start.size()) == 0;
}

PngChunkView::PngChunkView(std::span<const std::byte> whole) : whole_(whole) {}

std::string_view PngChunkView::type() const {
    return {reinterpret_cast<const char*>(whole_.data()) + 4, 4};
}

std::span<const std::byte> PngChunkView::data() const {
    return whole_.subspan(head, whole_.size() - head - checkSum);
}

bool PngChunkView::isNeeded() const { return !IsAncillary(type()) || type() == "tRNS"; }

bool PngChunkView::isSound() const {
    const auto summed = whole_.subspan(4, whole_.size() - 4 - checkSum);
    return libdeflate_crc32(0, summed.data(), summed.size()) ==
           Number(whole_.last(checkSum), ByteOrder::BigEndian);
}

std::vector<PngChunkView> SplitPng(std::span<const std::byte> file,
                                   const std::filesystem::path& path) {
    std::vector<PngChunkView> chunks;
    auto rest = file.subspan(std::min(file.size(), signature));
    do {
        constexpr std::size_t around = PngChunkView::head + PngChunkView::checkSum;
        const std::uint64_t size =
            rest.size() < around ? 0 : Number(rest.first(4), ByteOrder::BigEndian);
        if (rest.size() < around || size > rest.size() - around)
            throw UnreadablePicture(path, "is truncated");
        chunks.emplace_back(rest.first(around + size));
        rest = rest.subspan(around + size);
    } while (chunks.back().type() != "IEND");
    return chunks;
}

PngDetails PngDetailsOf(const std::vector<PngChunkView>& chunks,
                        const std::filesystem::path& path) {
    Details details(path);
    for (const PngChunkView& chunk : chunks) details.take(chunk);
    return details.result();
}

}  // namespace nevrel
