// write_pictures FILE: pictures, settings and what the native core makes of them, for the page's
// core to make the same.
//
// A record: the sample type, width and height and the fields of the settings as 32-bit words, then
// the RGBA input and the RGBA output.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <vector>

#include "nevrel.h"
#include "tests/kernel/pinned_results.h"

namespace {

using Fields = std::array<std::int32_t, 9>;

Fields FieldsOf(const judge::Values& v) {
    return {std::max(v.colorThreshold, 1),
            v.softness,
            std::max(v.bias, 0),
            v.colorKeyEnable,
            v.keyRed & 255,
            v.keyGreen,
            v.keyBlue,
            v.keyThreshold,
            v.keyInvert};
}

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "write_pictures: %s\n", what);
    std::exit(1);
}

nevrel_settings SettingsOf(const Fields& f) {
    return {sizeof(nevrel_settings), f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7], f[8]};
}

/// Alpha to the end or to the front.
template <typename P>
judge::Picture<P> Turned(const judge::Picture<P>& picture, int by) {
    using Channel = decltype(P::alpha);
    judge::Picture<P> turned = picture;
    for (P& pixel : turned.pixels) {
        const std::span channels(reinterpret_cast<Channel*>(&pixel), 4);
        std::rotate(channels.begin(), channels.begin() + by, channels.end());
    }
    return turned;
}

class Writer {
  public:
    explicit Writer(const char* path) : file_(path, std::ios::binary) {}

    /// Returns what the native core makes of an ARGB picture.
    template <typename P>
    judge::Picture<P> write(const judge::Picture<P>& argb, nevrel_sample sample,
                            const Fields& fields) {
        judge::Picture<P> before = Turned(argb, 1), after = before;
        const nevrel_settings settings = SettingsOf(fields);
        const auto rowBytes = static_cast<std::ptrdiff_t>(sizeof(P)) * argb.width;
        const nevrel_image in{before.pixels.data(), rowBytes}, out{after.pixels.data(), rowBytes};
        if (nevrel_smooth(&settings, NEVREL_RGBA, sample, argb.width, argb.height, &in, &out,
                          nullptr) != NEVREL_OK)
            Fail("a picture was not smoothed");
        const std::int32_t head[] = {sample, argb.width, argb.height};
        put(std::as_bytes(std::span(head)));
        put(std::as_bytes(std::span(fields)));
        put(std::as_bytes(std::span(before.pixels)));
        put(std::as_bytes(std::span(after.pixels)));
        return Turned(after, 3);
    }

    void close() {
        file_.close();
        if (!file_) Fail("the file was not written");
    }

  private:
    void put(std::span<const std::byte> bytes) {
        file_.write(reinterpret_cast<const char*>(bytes.data()),
                    static_cast<std::streamsize>(bytes.size()));
    }

    std::ofstream file_;
};

template <typename P>
void WritePinned(Writer& writer, const PinnedResult& pin, nevrel_sample sample, std::size_t depth) {
    const auto after = writer.write(PinnedPicture<P>(pin), sample, FieldsOf(pin.values));
    if (Checksum(after) != pin.checksums[depth]) Fail("a pinned result is another");
}

template <typename P>
void WriteRandom(Writer& writer, nevrel_sample sample, Dice& dice) {
    const judge::Values values = RandomValues(dice.oneIn(2), dice.oneIn(2), dice);
    const IndexPicture shapes = RandomShapes(dice.between(1, 70), dice.between(1, 40), dice);
    writer.write(Paint(shapes, RandomPalette<P>(values, dice)), sample, FieldsOf(values));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) Fail("usage: write_pictures FILE");
    Writer writer(argv[1]);
    for (const PinnedResult& pin : PinnedResults()) {
        WritePinned<judge::Pixel8>(writer, pin, NEVREL_UINT8, 0);
        WritePinned<judge::Pixel16>(writer, pin, NEVREL_UINT16_32768, 1);
        WritePinned<judge::PixelFloat>(writer, pin, NEVREL_FLOAT, 2);
    }
    Dice dice(18);
    for (int i = 0; i < 250; ++i) {
        WriteRandom<judge::Pixel8>(writer, NEVREL_UINT8, dice);
        WriteRandom<judge::Pixel16>(writer, NEVREL_UINT16, dice);
        WriteRandom<judge::Pixel16>(writer, NEVREL_UINT16_32768, dice);
        WriteRandom<judge::PixelFloat>(writer, NEVREL_FLOAT, dice);
    }
    writer.close();
}
