#include "command/pictures/png_encoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "command/pictures/deflate.h"
#include "command/pictures/file_numbers.h"

namespace nevrel {
namespace {

using Bytes = std::vector<std::byte>;

void Append(Bytes& to, std::uint64_t number, std::size_t size) {
    to.resize(to.size() + size);
    PutNumber(number, std::span(to).last(size), ByteOrder::BigEndian);
}

void Append(Bytes& to, std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    to.insert(to.end(), bytes.begin(), bytes.end());
}

Bytes Compress(std::span<const std::byte> bytes, int effort) {
    const Compressor compressor = NewCompressor(effort);
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), bytes.size());
    const auto room = std::make_unique_for_overwrite<std::byte[]>(most);  // only some is touched
    const std::size_t size =
        libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), room.get(), most);
    return {room.get(), room.get() + size};
}

Bytes Profile(const std::vector<char>& profile) {
    Bytes data;
    Append(data, std::string_view("ICC profile\0\0", 13));  // a name, and how it is compressed
    const Bytes compressed = Compress(std::as_bytes(std::span(profile)), PngEffort().level);
    data.insert(data.end(), compressed.begin(), compressed.end());
    return data;
}

std::optional<Bytes> Resolution(const Metadata& metadata) {
    const auto dots = [](double number) {
        return number >= 1 && number < 1e9 ? static_cast<std::uint64_t>(std::lround(number)) : 0;
    };
    if (dots(metadata.dotsX) == 0 || dots(metadata.dotsY) == 0) return std::nullopt;
    Bytes data;
    Append(data, dots(metadata.dotsX), 4);
    Append(data, dots(metadata.dotsY), 4);
    Append(data, metadata.areDotsPerMetre ? 1 : 0, 1);
    return data;
}

/// Nothing for what is no date.
std::optional<Bytes> Time(const std::string& date) {
    unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (std::sscanf(date.c_str(), "%4u:%2u:%2u %2u:%2u:%2u", &year, &month, &day, &hour, &minute,
                    &second) != 6)
        return std::nullopt;
    const bool isDay = month >= 1 && month <= 12 && day >= 1 && day <= 31;
    if (!isDay || hour > 23 || minute > 59 || second > 60) return std::nullopt;
    Bytes data;
    Append(data, year, 2);
    for (const unsigned number : {month, day, hour, minute, second}) Append(data, number, 1);
    return data;
}

PngChunk TextChunk(const std::string& keyword, const std::string& text) {
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
    Bytes data;
    Append(data, keyword);
    Append(data, 0, isAscii ? 1 : 5);  // its end; not compressed, of no language, not translated
    Append(data, text);
    return {isAscii ? "tEXt" : "iTXt", data, PngChunk::Place::BeforePixels};
}

void AppendChunk(Bytes& to, std::string_view type, std::span<const std::byte> data) {
    Append(to, data.size(), 4);
    const std::size_t summed = to.size();
    Append(to, type);
    to.insert(to.end(), data.begin(), data.end());
    Append(to, libdeflate_crc32(0, to.data() + summed, to.size() - summed), 4);
}

void AppendPalette(Bytes& to, std::span<const PngColor> palette) {
    Bytes colors, alphas;
    std::size_t translucent = 0;  // up to the last that is
    for (const auto& [red, green, blue, alpha] : palette) {
        for (const std::uint8_t value : {red, green, blue}) Append(colors, value, 1);
        Append(alphas, alpha, 1);
        if (alpha != 255) translucent = alphas.size();
    }
    AppendChunk(to, "PLTE", colors);
    if (translucent > 0) AppendChunk(to, "tRNS", std::span(alphas).first(translucent));
}

}  // namespace

std::vector<std::byte> CompressRows(const PngRows& rows, const PngEffort& effort) {
    const auto filtered = FilterRows(rows, effort.takesDifferences);
    return Compress({filtered.get(), rows.filteredSize()}, effort.level);
}

std::vector<PngChunk> MetadataChunks(const Metadata& metadata) {
    std::vector<PngChunk> chunks;
    const auto add = [&](const char* type, std::optional<Bytes> data) {
        if (data) chunks.push_back({type, std::move(*data), PngChunk::Place::BeforePalette});
    };
    if (!metadata.profile.empty()) add("iCCP", Profile(metadata.profile));
    if (metadata.gamma > 0) {
        Bytes gamma;
        Append(gamma, static_cast<std::uint64_t>(std::lround(100000 / metadata.gamma)), 4);
        add("gAMA", gamma);
    }
    add("pHYs", Resolution(metadata));
    add("tIME", Time(metadata.date));
    for (const auto& [keyword, text] : metadata.texts) chunks.push_back(TextChunk(keyword, text));
    return chunks;
}

void WritePng(const PngPixels& pixels, const std::vector<PngChunk>& chunks, MemoryFile& file) {
    constexpr std::size_t largestChunk = 1 << 30;
    Bytes bytes, header;
    bytes.reserve(pixels.compressed.size() + 4096);
    const auto appendChunks = [&](PngChunk::Place place) {
        for (const PngChunk& chunk : chunks) {
            if (chunk.place == place) AppendChunk(bytes, chunk.type, chunk.data);
        }
    };
    Append(bytes, std::string_view("\x89PNG\r\n\x1a\n"));
    Append(header, static_cast<std::uint64_t>(pixels.width), 4);
    Append(header, static_cast<std::uint64_t>(pixels.height), 4);
    Append(header, pixels.bits, 1);
    Append(header, static_cast<std::uint64_t>(pixels.type), 1);
    Append(header, 0, 3);  // compression, filters and passes: there is but one kind, but one, one
    AppendChunk(bytes, "IHDR", header);
    appendChunks(PngChunk::Place::BeforePalette);
    if (!pixels.palette.empty()) AppendPalette(bytes, pixels.palette);
    appendChunks(PngChunk::Place::BeforePixels);
    for (auto rest = pixels.compressed; !rest.empty();) {
        const auto data = rest.first(std::min(rest.size(), largestChunk));
        AppendChunk(bytes, "IDAT", data);
        rest = rest.subspan(data.size());
    }
    appendChunks(PngChunk::Place::AfterPixels);
    AppendChunk(bytes, "IEND", {});
    file.set(0, bytes);
}

}  // namespace nevrel
