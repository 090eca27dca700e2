// What PNG files say beside their samples, carried from file to file as it stands there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
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

/// A chunk as it lies in a file.
class PngChunkView {
  public:
    /// What stands before its data, its size and type, and behind them.
    static constexpr std::size_t head = 8, checkSum = 4;

    explicit PngChunkView(std::span<const std::byte> whole);

    [[nodiscard]] std::span<const std::byte> whole() const { return whole_; }
    [[nodiscard]] std::string_view type() const;
    [[nodiscard]] std::span<const std::byte> data() const;
    /// Whether no decoder can do without it.
    [[nodiscard]] bool isNeeded() const;
    /// Whether its check sum is right.
    [[nodiscard]] bool isSound() const;

  private:
    std::span<const std::byte> whole_;
};

/// Whether a file is a PNG by its first bytes.
[[nodiscard]] bool IsPng(std::span<const std::byte> file);

/// The chunks of a PNG up to its end mark. Throws UnreadablePicture when the file ends before that.
[[nodiscard]] std::vector<PngChunkView> SplitPng(std::span<const std::byte> file,
                                                 const std::filesystem::path& path);

/// All but the samples. Chunks that are unknown and tied to the samples are left out. Throws
/// UnreadablePicture.
[[nodiscard]] PngDetails PngDetailsOf(const std::vector<PngChunkView>& chunks,
                                      const std::filesystem::path& path);

}  // namespace nevrel
