// Files whose bytes matter: DPX with its many layouts of rows, PNG with its chunks and palettes.
#include <zlib.h>

#include <array>
#include <cstdint>
#include <random>

#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

namespace {

using Numbers = std::vector<std::uint32_t>;

std::string BigEndian(std::uint64_t number, int bytes) {
    std::string text;
    while (bytes-- > 0) text += static_cast<char>(number >> (8 * bytes));
    return text;
}

Numbers Noise(std::size_t count, unsigned bits) {
    std::mt19937 generator(bits);
    Numbers numbers(count);
    for (std::uint32_t& number : numbers)
        number = static_cast<std::uint32_t>(generator()) & ((1U << bits) - 1);
    return numbers;
}

constexpr std::size_t width = 7, height = 40;

using FileLayoutTest = CommandTest;

struct DpxKind {
    unsigned channels, bits, packing;
    std::uint32_t otherBits;  ///< what fills the words beside the samples
    unsigned padding;         ///< bytes behind each row
    std::uint32_t toldPadding;
    bool tellsSize;
};

constexpr std::uint32_t undefined = 0xFFFFFFFF;

const DpxKind dpxKinds[] = {
    {3, 8, 0, 0, 3, 0, true},          {3, 8, 1, 0, 3, 3, true},
    {3, 8, 0, 0, 3, undefined, false}, {3, 8, 0, 0, 0, 0, true},
    {3, 8, 0, 0, 0, undefined, false}, {1, 8, 0, 0, 1, 0, false},
    {4, 8, 0, 0, 0, 0, true},          {3, 16, 0, 0, 2, 0, true},
    {3, 16, 1, 0, 0, 0, false},        {3, 10, 1, 0, 0, 0, true},
    {4, 10, 1, 0, 0, 0, true},         {4, 10, 2, 0, 0, 0, false},
    {3, 12, 1, 0, 2, 0, true},         {3, 12, 1, 0xF, 0, 0, true},
    {4, 12, 2, 0, 0, 0, true},         {3, 12, 2, 0, 2, 2, false},
};

/// A row in the order of the standard, big-endian.
std::string DpxRow(const DpxKind& kind, const Numbers& samples) {
    std::string row;
    if (kind.bits == 10) {
        const unsigned shift = kind.packing == 1 ? 2 : 0;
        for (std::size_t i = 0; i < samples.size(); i += 3) {
            const auto at = [&](std::size_t k) { return k < samples.size() ? samples[k] : 0; };
            row += BigEndian((at(i) << 20 | at(i + 1) << 10 | at(i + 2)) << shift, 4);
        }
        return row;
    }
    for (const std::uint32_t sample : samples) {
        const bool high = kind.bits == 12 && kind.packing == 1;
        row += BigEndian(high ? sample << 4 | kind.otherBits : sample, kind.bits == 8 ? 1 : 2);
    }
    return row;
}

std::string DpxFile(const DpxKind& kind, const Numbers& samples) {
    std::string rows;
    const std::size_t rowSamples = width * kind.channels;
    for (std::size_t i = 0; i < samples.size(); i += rowSamples) {
        const auto from = samples.begin() + static_cast<std::ptrdiff_t>(i);
        rows += DpxRow(kind, {from, from + static_cast<std::ptrdiff_t>(rowSamples)});
        rows += std::string(kind.padding, '\0');
    }
    std::string file(2048, '\0');
    const auto set = [&](std::size_t at, std::uint64_t number, int size) {
        file.replace(at, static_cast<std::size_t>(size), BigEndian(number, size));
    };
    file.replace(0, 4, "SDPX");
    file.replace(8, 4, "V1.0");
    set(4, 2048, 4);
    set(16, kind.tellsSize ? file.size() + rows.size() : undefined, 4);
    set(770, 1, 2);
    set(772, width, 4);
    set(776, height, 4);
    set(800, kind.channels == 1 ? 6 : 47 + kind.channels, 1);
    set(803, kind.bits, 1);
    set(804, kind.packing, 2);
    set(808, 2048, 4);
    set(812, kind.toldPadding, 4);
    return file + rows;
}

TEST_F(FileLayoutTest, DpxRowsOfEveryKindKeepTheirSamples) {
    for (const DpxKind& kind : dpxKinds) {
        SCOPED_TRACE(testing::Message() << kind.channels << " channels, " << kind.bits
                                        << " bits, packing " << kind.packing << ", padding "
                                        << kind.padding << ", told " << kind.toldPadding);
        const Numbers samples = Noise(width * height * kind.channels, kind.bits);
        WriteText(path("in.dpx"), DpxFile(kind, samples));
        ASSERT_EQ(run("smooth --softness 0 in.dpx -o out.dpx").errors, "");
        ASSERT_EQ(run("smooth --softness 0 out.dpx -o out.png").errors, "");
        const std::string before = FileText(path("in.dpx")), after = FileText(path("out.dpx"));
        EXPECT_EQ(after.substr(0, 4), "SDPX");
        EXPECT_EQ(after.substr(16, 4), BigEndian(after.size(), 4));
        EXPECT_EQ(after.substr(803, 3), before.substr(803, 3));
        const std::size_t row = DpxRow(kind, Noise(width * kind.channels, 1)).size();
        EXPECT_EQ(after.substr(812, 4), BigEndian((4 - row % 4) % 4, 4));
        EXPECT_EQ(after.substr(4, 4), BigEndian(after.size() - (row + 3) / 4 * 4 * height, 4));

        const TestPicture png = ReadTestPicture(path("out.png"));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto at = static_cast<int>(i / kind.channels);
            const int x = at % static_cast<int>(width), y = at / static_cast<int>(width);
            const double full = (1U << kind.bits) - 1;
            const double step = kind.bits == 8 ? 1e-6 : 1.0 / 65535;
            ASSERT_NEAR(Unit(png, x, y, static_cast<int>(i % kind.channels)), samples[i] / full,
                        step);
        }
    }
}

TEST_F(FileLayoutTest, DpxOfUncertainOrUnknownLayoutIsRefused) {
    const Numbers samples = Noise(width * height * 3, 8);
    const std::string whole = DpxFile(dpxKinds[2], samples);
    const auto changed = [&](std::size_t at, std::uint64_t number, int size) {
        return std::string(whole).replace(at, static_cast<std::size_t>(size),
                                          BigEndian(number, size));
    };
    const struct {
        std::string bytes, word;
    } refused[] = {{whole.substr(0, whole.size() - 9), "truncated"},
                   {whole + "ninebytes", "rows"},
                   {whole.substr(0, 2500), "truncated"},
                   {changed(806, 1, 2), "run-length"},
                   {changed(800, 52, 1), "channels"}};
    for (const auto& [bytes, word] : refused) {
        WriteText(path("in.dpx"), bytes);
        ExpectError(smooth("in.dpx"), 1, {"in.dpx", word});
    }
}

std::string Chunk(const std::string& type, const std::string& data) {
    const std::string both = type + data;
    const auto sum =
        crc32(0, reinterpret_cast<const Bytef*>(both.data()), static_cast<uInt>(both.size()));
    return BigEndian(data.size(), 4) + both + BigEndian(sum, 4);
}

/// Noise with chunks before the palette, before the pixels and behind them.
std::string PngFile(unsigned bits, unsigned colorType, unsigned channels, const std::string& first,
                    const std::string& palette, const std::string& last) {
    const std::size_t rowBytes = (width * bits * channels + 7) / 8;
    std::string rows;
    for (const std::uint32_t byte : Noise(height * rowBytes, 8))
        rows.append(rows.size() % (rowBytes + 1) == 0 ? 1 : 0, '\0')
            .push_back(static_cast<char>(byte));
    std::string packed(compressBound(rows.size()), '\0');
    uLongf size = packed.size();
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(rows.data()), rows.size());
    const std::string header = BigEndian(width, 4) + BigEndian(height, 4) + BigEndian(bits, 1) +
                               BigEndian(colorType, 1) + std::string(3, '\0');
    return "\x89PNG\r\n\x1a\n" + Chunk("IHDR", header) + first + palette +
           Chunk("IDAT", packed.substr(0, size)) + last + Chunk("IEND", "");
}

/// The file without its samples and what describes them.
std::string OtherChunks(const std::string& png, bool withPalette = true) {
    std::string others;
    for (std::size_t at = 8; at + 8 < png.size();) {
        std::uint32_t size = 0;
        for (std::size_t i = 0; i < 4; ++i)
            size = size << 8 | static_cast<unsigned char>(png[at + i]);
        const std::string type = png.substr(at + 4, 4);
        const bool isPalette = type == "PLTE" || type == "tRNS" || type == "hIST" || type == "bKGD";
        if (type == "IDAT") others += "IDAT";
        if (type != "IHDR" && type != "IDAT" && (withPalette || !isPalette))
            others += png.substr(at, size + 12);
        at += size + 12;
    }
    return others;
}

const std::string firstChunks =
    Chunk("gAMA", BigEndian(45000, 4)) +
    Chunk("cHRM", BigEndian(0x00007A2600008084, 8) + std::string(24, '\1'));
const std::string lastChunks = Chunk("pHYs", BigEndian(3543, 4) + BigEndian(3543, 4) + "\1") +
                               Chunk("oFFs", BigEndian(5, 4) + BigEndian(6, 4) + BigEndian(0, 1)) +
                               Chunk("tIME", BigEndian(0x07D10203040506, 7)) +
                               Chunk("vpAg", "any") +
                               Chunk("tEXt", std::string("Comment\0text", 12));

TEST_F(FileLayoutTest, PngChunksStayAsTheyAreAndNoneIsAdded) {
    for (const auto& [bits, colorType, channels] : {std::array{1U, 0U, 1U},
                                                    {4U, 0U, 1U},
                                                    {16U, 0U, 1U},
                                                    {8U, 4U, 2U},
                                                    {8U, 2U, 3U},
                                                    {16U, 6U, 4U}}) {
        for (const bool tagged : {false, true}) {
            WriteText(path("in.png"), PngFile(bits, colorType, channels, tagged ? firstChunks : "",
                                              "", tagged ? lastChunks : ""));
            ASSERT_EQ(smooth("in.png").errors, "");
            EXPECT_EQ(OtherChunks(FileText(path("out_in.png"))),
                      OtherChunks(FileText(path("in.png"))))
                << bits << " bits, type " << colorType;
        }
    }
}

TEST_F(FileLayoutTest, PalettesStayWhileTheyHoldTheResult) {
    for (const unsigned bits : {1U, 2U, 4U, 8U}) {
        const std::size_t colors = std::size_t{1} << bits;
        std::string palette;
        for (std::size_t i = 0; i < colors; ++i) palette += BigEndian(i * 0x010305 & 0xFFFFFF, 3);
        const std::string chunks = Chunk("PLTE", palette) +
                                   Chunk("tRNS", std::string("\x80\x40", 2)) + Chunk("bKGD", "\1") +
                                   Chunk("hIST", std::string(2 * colors, 'h'));
        WriteText(path("in.png"), PngFile(bits, 3, 1, firstChunks, chunks, lastChunks));
        ASSERT_EQ(smooth("in.png", "--softness 0").errors, "");
        const std::string before = FileText(path("in.png")), after = FileText(path("out_in.png"));
        EXPECT_EQ(after.substr(0, 33), before.substr(0, 33)) << bits;  // header
        EXPECT_EQ(OtherChunks(after), OtherChunks(before)) << bits;
        EXPECT_EQ(ReadTestPicture(path("out_in.png")).samples,
                  ReadTestPicture(path("in.png")).samples);
    }
    // Blends of so much noise need more colours than there are.
    const CommandRun crowded = smooth("in.png", "--verbose --color-threshold 1 --softness 100");
    EXPECT_NE(crowded.errors.find("more than 256 colors"), std::string::npos) << crowded.errors;
    const std::string after = FileText(path("out_in.png"));
    EXPECT_EQ(after[25], 6);  // RGB and alpha
    EXPECT_EQ(OtherChunks(after, false), OtherChunks(FileText(path("in.png")), false));
    EXPECT_NE(after.find(Chunk("bKGD", std::string("\0\1\0\3\0\5", 6))), std::string::npos);
}

}  // namespace
