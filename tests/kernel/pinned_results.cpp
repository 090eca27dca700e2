#include "tests/kernel/pinned_results.h"

#include <vector>

#include "tests/kernel/dice.h"

namespace {

/// A cel: an outlined disc, a slope, a 45-degree line, thin lines with tips, a notched block,
/// specks.
constexpr std::string_view cel = R"(
............................................
.........######.............................
......###oooooo###..............xxxxxxxxxxxx
.....#oooooooooooo#.........xxxxxxxxxxxxxxxx
....#oooooooooooooo#....xxxxxxxxxxxxxxxxxxxx
...#oooooo##oooooooo#.xxxxxxxxxxxxxxxxxxxxxx
...#ooooo####ooooooo#...xxxxxxxxxxxxxxxxxxxx
...#ooooo####ooooooo#.......................
...#oooooo##oooooooo#...........##..........
....#oooooooooooooo#...........##......#####
.....#oooooooooooo#...........##...........#
......###oooooo###...........##............#
.........######.............##.....o.......#
...........................##..............#
..#########...............##....xx.........#
.........................##.....xx..........
.....xxxxxxxxx..........#...................
.....xxxxx.xxx.........#.........xxxxxxx....
...xxxxxxxxxxxxx......#..........xxxxxxxx...
...xxxxx..xxxxxx.....#............xxxxxxx...
.....xxxxxxxxx......#...........xxxxxxxxx...
.....xxxxxxxxxx....#.............xxx.xxxx...
..................#.............xxxxx..x....
...................................#........
)";

IndexPicture Cel() {
    const std::string_view text = cel.substr(1);
    const auto width = static_cast<int>(text.find('\n'));
    IndexPicture picture(width, static_cast<int>(text.size()) / (width + 1));
    std::size_t cell = 0;
    for (const char c : text)
        if (c != '\n')
            picture.cells.at(cell++) = static_cast<std::uint8_t>(std::string_view(".#ox").find(c));
    return picture;
}

/// Noise holds most of the small patterns.
IndexPicture Noise() {
    IndexPicture picture(45, 20);
    Dice dice(1);
    for (std::uint8_t& cell : picture.cells) cell = static_cast<std::uint8_t>(dice.below(4));
    return picture;
}

template <typename P>
std::vector<P> Palette() {
    const auto channel = [](int v) {
        if constexpr (sizeof(P) == 4) return static_cast<std::uint8_t>(v);
        if constexpr (sizeof(P) == 8) return static_cast<std::uint16_t>(v * 32768 / 255);
        if constexpr (sizeof(P) == 16) return static_cast<float>(v) / 255.0f;
    };
    const auto colour = [&](int a, int r, int g, int b) {
        return P{channel(a), channel(r), channel(g), channel(b)};
    };
    return {colour(255, 250, 251, 252), colour(255, 20, 16, 24), colour(200, 240, 180, 60),
            colour(0, 90, 90, 90)};
}

constexpr judge::Values Keyed(judge::Values values, bool invert) {
    values.colorKeyEnable = 1;
    values.keyRed = values.keyGreen = values.keyBlue = 255;
    values.keyThreshold = 20;
    values.keyInvert = invert;
    return values;
}

constexpr judge::Values usual = {.colorThreshold = 10, .softness = 70};
constexpr judge::Values usualKey = Keyed(usual, false), usualInvert = Keyed(usual, true);
constexpr judge::Values bent = {.colorThreshold = 100, .softness = 100, .bias = 60};
constexpr judge::Values bentKey = Keyed(bent, false), bentInvert = Keyed(bent, true);

constexpr PinnedResult results[] = {
    {"cel", Cel, usual, {0xebaabfc02665ed72, 0x25692517ebb6721, 0x3f31f1935f9c6145}},
    {"cel/key", Cel, usualKey, {0x60c2362fb7c8eb73, 0x90fe464731ee9db4, 0xcf4437eeb0be1eb2}},
    {"cel/invert", Cel, usualInvert, {0x3b90677ca18920d9, 0x108a2f623c4ace6, 0x9a8d148487aa669a}},
    {"noise", Noise, bent, {0x3b53b659801ecff0, 0x796ae18b66bebeec, 0x4faf7ed57c98cd57}},
    {"noise/key", Noise, bentKey, {0x7310157f0063bd3a, 0xd1bf5d0bc6fce82e, 0x1a91bcfa68033b89}},
    {"noise/invert", Noise, bentInvert, {0xca4b09567b5bdf9, 0xd0ea92802675fea1, 0x6985fc960cdcb6c}},
};

}  // namespace

std::span<const PinnedResult> PinnedResults() { return results; }

template <typename P>
judge::Picture<P> PinnedPicture(const PinnedResult& result) {
    return Paint(result.draw(), Palette<P>());
}

template judge::Picture<judge::Pixel8> PinnedPicture(const PinnedResult&);
template judge::Picture<judge::Pixel16> PinnedPicture(const PinnedResult&);
template judge::Picture<judge::PixelFloat> PinnedPicture(const PinnedResult&);
