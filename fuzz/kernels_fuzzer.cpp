// The nine kernels on small pictures of four colours, with the values and the pictures of any host:
// every instruction set gives what the plain form gives, and nothing but the output's pixels is
// written.
#include "fuzz/fuzz_target.h"
#include "tests/kernel/kernel_run.h"

namespace {

/// Most pictures are tiny, for speed; the vector forms begin at 33 columns and work on four
/// times 56.
int ReadWidth(ByteSource& bytes) {
    const int width = bytes.byte();
    return 1 + (width < 160 ? width % 16 : width < 230 ? width % 72 : width);
}

judge::Values ReadValues(ByteSource& bytes) {
    using judge::Values;
    Values values;
    for (auto field : {&Values::colorThreshold, &Values::softness, &Values::bias, &Values::keyRed,
                       &Values::keyGreen, &Values::keyBlue, &Values::keyThreshold,
                       &Values::colorKeyEnable, &Values::keyInvert})
        values.*field = bytes.mostlySmall();
    return values;
}

void ReadChannel(ByteSource& bytes, std::uint8_t& channel) { channel = bytes.byte(); }

void ReadChannel(ByteSource& bytes, std::uint16_t& channel) {
    const auto value = bytes.mostlySmall<std::uint16_t>();
    channel = value <= ByteSource::largestSmall
                  ? static_cast<std::uint16_t>(value * 32768 / ByteSource::largestSmall)
                  : value;
}

void ReadChannel(ByteSource& bytes, float& channel) {
    const int small = bytes.byte();
    channel = small <= ByteSource::largestSmall
                  ? static_cast<float>(small) / ByteSource::largestSmall
                  : bytes.raw<float>();
}

template <typename P>
judge::Picture<P> ReadPicture(ByteSource& bytes) {
    const int width = ReadWidth(bytes), height = 1 + bytes.below(width > 16 ? 4 : 9);
    P palette[4];
    for (P& color : palette) {
        for (auto* channel : {&color.alpha, &color.red, &color.green, &color.blue})
            ReadChannel(bytes, *channel);
    }
    // Four pixels a byte; what the bytes do not reach repeats them.
    const std::string text = bytes.text();
    const std::string cells = text.empty() ? std::string(1, '\0') : text;
    judge::Picture<P> picture(width, height);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = palette[cells[i / 4 % cells.size()] >> i % 4 * 2 & 3];
    return picture;
}

template <typename P>
void RunKernels(ByteSource& bytes) {
    const judge::Values values = ReadValues(bytes);
    const auto layout = bytes.raw<std::uint64_t>();
    RunKernel(values, ReadPicture<P>(bytes), layout);
    Require(!testing::Test::HasFailure(), "see above");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource bytes(data, size);
    constexpr void (*runs[])(ByteSource&) = {RunKernels<judge::Pixel8>, RunKernels<judge::Pixel16>,
                                             RunKernels<judge::PixelFloat>};
    runs[bytes.below(3)](bytes);
    return 0;
}
