// What PNG files say beside their samples, carried from file to file as it stands there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace nevrel {

/// A chunk that neither describes nor holds the samples.
struct PngChunk {
    enum class Place { BeforePalette, BeforePixels, AfterPixels };

    std::string type;
    std::vector<std::byte> data;
    Place place;
};

/// Numbers of the format.
enum class PngColorType : std::uint8_t { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

using PngColor = std::array<std::uint8_t, 4>;  ///< red, green, blue, alpha

struct PngDetails {
    PngColorType colorType{};
    unsigned bits = 0;  ///< of a sample or of an index to the palette
    std::vector<PngColor> palette;
    std::vector<PngChunk> chunks;
    bool isAnimated = false;  ///< there are further frames; none of their chunks is here
};

/// Reads all but the samples; nothing when the file is no PNG by its first bytes. Chunks that are
/// unknown and tied to the samples are left out. Throws UnreadablePicture when the file ends before
/// its end mark.
[[nodiscard]] std::optional<PngDetails> ReadPngDetails(const std::filesystem::path& path);

}  // namespace nevrel
