#include "command/pictures/png_inflate.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "command/errors.h"
#include "command/pictures/deflate.h"
#include "command/pictures/file_numbers.h"

namespace nevrel {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::size_t largestChunk = 0x7FFFFFFF, largestBlock = 0xFFFF;

void Append(Bytes& to, std::span<const std::byte> bytes) {
    to.insert(to.end(), bytes.begin(), bytes.end());
}

void AppendNumber(Bytes& to, std::uint64_t number, std::size_t size, ByteOrder order) {
    std::array<std::byte, 4> bytes{};
    PutNumber(number, std::span(bytes).first(size), order);
    Append(to, std::span(bytes).first(size));
}

/// No less than the samples of all rows take, with what stands before each, in one pass or in
/// seven. Nothing where the header is wrong, or they would not fit into one chunk.
std::optional<std::size_t> MostInflated(std::span<const std::byte> header) {
    constexpr std::size_t headerSize = 13;
    constexpr std::array<std::uint64_t, 7> channels{1, 0, 3, 1, 2, 0, 4};
    if (header.size() != headerSize) return std::nullopt;
    const std::uint64_t width = Number(header.first(4), ByteOrder::BigEndian);
    const std::uint64_t height = Number(header.subspan(4, 4), ByteOrder::BigEndian);
    const auto bits = std::to_integer<std::uint64_t>(header[8]);
    const auto colorType = std::to_integer<std::size_t>(header[9]);
    if (width > largestChunk || height > largestChunk || colorType >= channels.size() || bits > 16)
        return std::nullopt;
    const std::uint64_t rowBytes = (width * bits * channels.at(colorType) + 7) / 8;
    constexpr std::uint64_t mostPassRows = 2, besideRow = 2;
    const std::uint64_t beside = (mostPassRows * height + 7) * besideRow;
    constexpr std::uint64_t room = largestChunk / 2;
    if (rowBytes > room || beside > room || height > room / std::max<std::uint64_t>(rowBytes, 1))
        return std::nullopt;
    return rowBytes * height + beside;
}

/// The data of the file's IDAT chunks, one after the other.
Bytes Deflated(const std::vector<PngChunkView>& chunks) {
    Bytes deflated;
    for (const PngChunkView& chunk : chunks) {
        if (chunk.type() == "IDAT") Append(deflated, chunk.data());
    }
    return deflated;
}

/// A palette without the colours that no index of so many bits reaches: decoders differ on whether
/// there may be any. Its check sum is wrong.
void AppendPalette(Bytes& to, std::span<const std::byte> colors, unsigned bits) {
    const auto reached = colors.first(std::min(colors.size(), std::size_t{3} << bits));
    AppendNumber(to, reached.size(), 4, ByteOrder::BigEndian);
    Append(to, std::as_bytes(std::span("PLTE", 4)));
    Append(to, reached);
    AppendNumber(to, 0, PngChunkView::checkSum, ByteOrder::BigEndian);
}

/// A zlib stream of stored blocks, in a chunk.
void AppendStored(Bytes& to, std::span<const std::byte> data) {
    constexpr std::array start{std::byte{0x78}, std::byte{1}};
    const std::size_t sizeAt = to.size();
    AppendNumber(to, 0, 4, ByteOrder::BigEndian);
    Append(to, std::as_bytes(std::span("IDAT", 4)));
    Append(to, start);
    std::size_t at = 0;
    do {
        const std::size_t size = std::min(largestBlock, data.size() - at);
        to.push_back(std::byte{at + size == data.size()});
        AppendNumber(to, size, 2, ByteOrder::LittleEndian);
        AppendNumber(to, ~size, 2, ByteOrder::LittleEndian);
        Append(to, data.subspan(at, size));
        at += size;
    } while (at < data.size());
    AppendNumber(to, 0, 4, ByteOrder::BigEndian);  // for the check sum of the stream
    PutNumber(to.size() - sizeAt - PngChunkView::head, std::span(to).subspan(sizeAt, 4),
              ByteOrder::BigEndian);
    AppendNumber(to, 0, PngChunkView::checkSum, ByteOrder::BigEndian);
}

}  // namespace

std::optional<Bytes> InflatePng(std::span<const std::byte> file,
                                const std::vector<PngChunkView>& chunks,
                                const std::filesystem::path& path) {
    for (const PngChunkView& chunk : chunks) {
        if (chunk.isNeeded() && !chunk.isSound()) {
            throw UnreadablePicture(path, "damaged: the check sum of its " +
                                              std::string(chunk.type()) + " chunk is wrong");
        }
    }
    const auto mostInflated = MostInflated(chunks.front().data());
    if (!mostInflated) return std::nullopt;
    const Decompressor decompressor = NewDecompressor();
    const Bytes deflated = Deflated(chunks);
    const auto inflated = std::make_unique_for_overwrite<std::byte[]>(*mostInflated);
    std::size_t size = 0;
    const auto result = libdeflate_zlib_decompress(
        decompressor.get(), deflated.data(), deflated.size(), inflated.get(), *mostInflated, &size);
    if (result == LIBDEFLATE_INSUFFICIENT_SPACE) return std::nullopt;
    if (result != LIBDEFLATE_SUCCESS)
        throw UnreadablePicture(path, "damaged or truncated: its samples cannot be inflated");
    Bytes stored(file.begin(), chunks.front().whole().data() - file.data() + file.begin());
    stored.reserve(stored.size() + size + size / largestBlock * 5 + 2000);
    const auto bits = std::to_integer<unsigned>(chunks.front().data()[8]);
    bool hasSamples = false;
    for (const PngChunkView& chunk : chunks) {
        if (chunk.type() == "PLTE" && bits < 8) {
            AppendPalette(stored, chunk.data(), bits);
        } else if (chunk.type() != "IDAT") {
            if (chunk.isNeeded()) Append(stored, chunk.whole());
        } else if (!std::exchange(hasSamples, true)) {
            AppendStored(stored, {inflated.get(), size});
        }
    }
    return stored;
}

}  // namespace nevrel
