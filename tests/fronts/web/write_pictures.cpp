// write_pictures FILE: pictures, settings and what the native core makes of them, for the page's
// core to make the same.
//
// A record: the sample type, width and height and the fields of the settings as 32-bit words, then
// the RGBA input and the RGBA output.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <vector>

#include "nevrel.h"
#include "tests/kernel/pinned_results.h"

namespace {

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "write_pictures: %s\n", what);
    std::exit(1);
}

template <typename T>
void Put(std::ostream& file, std::span<const T> values) {
    file.write(reinterpret_cast<const char*>(values.data()),
               static_cast<std::streamsize>(values.size_bytes()));
}

/// The pixels with alpha at the end.
template <typename P>
void PutPixels(std::ostream& file, judge::Picture<P> picture) {
    for (P& p : picture.pixels) p = {p.red, p.green, p.blue, p.alpha};
    Put<P>(file, picture.pixels);
}

template <typename P>
void Write(std::ostream& file, const judge::Picture<P>& before, nevrel_sample sample,
           const judge::Values& v) {
    const std::int32_t head[] = {sample, before.width, before.height};
    const nevrel_settings settings = {sizeof settings,  std::max(v.colorThreshold, 1),
                                      v.softness,       std::max(v.bias, 0),
                                      v.colorKeyEnable, v.keyRed & 255,
                                      v.keyGreen,       v.keyBlue,
                                      v.keyThreshold,   v.keyInvert};
    judge::Picture<P> after = before;
    const nevrel_image image{after.pixels.data(),
                             static_cast<std::ptrdiff_t>(sizeof(P)) * after.width};
    if (nevrel_smooth(&settings, NEVREL_ARGB, sample, after.width, after.height, &image, &image,
                      nullptr) != NEVREL_OK)
        Fail("a picture was not smoothed");
    Put<std::int32_t>(file, head);
    Put(file, std::span(&settings.color_threshold, 9));
    PutPixels(file, before);
    PutPixels(file, after);
}

template <typename P>
void WriteRandom(std::ostream& file, nevrel_sample sample, Dice& dice) {
    const judge::Values values = RandomValues(dice.oneIn(2), dice.oneIn(2), dice);
    const IndexPicture shapes = RandomShapes(dice.between(1, 70), dice.between(1, 40), dice);
    Write(file, Paint(shapes, RandomPalette<P>(values, dice)), sample, values);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) Fail("usage: write_pictures FILE");
    std::ofstream file(argv[1], std::ios::binary);
    for (const PinnedResult& pin : PinnedResults()) {
        Write(file, PinnedPicture<judge::Pixel8>(pin), NEVREL_UINT8, pin.values);
        Write(file, PinnedPicture<judge::Pixel16>(pin), NEVREL_UINT16_32768, pin.values);
        Write(file, PinnedPicture<judge::PixelFloat>(pin), NEVREL_FLOAT, pin.values);
    }
    Dice dice(18);
    for (int i = 0; i < 250; ++i) {
        WriteRandom<judge::Pixel8>(file, NEVREL_UINT8, dice);
        WriteRandom<judge::Pixel16>(file, NEVREL_UINT16, dice);
        WriteRandom<judge::Pixel16>(file, NEVREL_UINT16_32768, dice);
        WriteRandom<judge::PixelFloat>(file, NEVREL_FLOAT, dice);
    }
    file.close();
    if (!file) Fail("the file was not written");
}
