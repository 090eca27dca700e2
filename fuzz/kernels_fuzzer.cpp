// The nine kernels on small pictures of four colours, with the values and the pictures of any host: every
// instruction set gives what the plain form gives, and nothing but the output's pixels is written.
#include <vector>

#include "fuzz/fuzz_target.h"
#include "kernel/dispatch_kernel.h"
#include "tests/kernel/world_host.h"

using standalone::MemoryStyle;
using standalone::World;

namespace {

/// Most pictures are tiny, for speed; the vector forms begin at 33 columns and work on four times 56.
int ReadWidth(ByteSource& bytes) {
    const int width = bytes.byte();
    return 1 + (width < 160 ? width % 16 : width < 230 ? width % 72 : width);
}

EffectValues ReadValues(ByteSource& bytes) {
    EffectValues values{};
    for (auto field :
         {&EffectValues::colorThreshold, &EffectValues::softness, &EffectValues::bias, &EffectValues::keyRed,
          &EffectValues::keyGreen, &EffectValues::keyBlue, &EffectValues::keyThreshold,
          &EffectValues::colorKeyEnable, &EffectValues::keyInvert}) {
        values.*field = bytes.mostlySmall();
    }
    return values;
}

void ReadChannel(ByteSource& bytes, A_u_char& channel) { channel = bytes.byte(); }

void ReadChannel(ByteSource& bytes, A_u_short& channel) {
    const auto value = bytes.mostlySmall<A_u_short>();
    channel = value <= ByteSource::kLargestSmall
                  ? static_cast<A_u_short>(value * 32768 / ByteSource::kLargestSmall)
                  : value;
}

void ReadChannel(ByteSource& bytes, float& channel) {
    const int small = bytes.byte();
    channel = small <= ByteSource::kLargestSmall ? static_cast<float>(small) / ByteSource::kLargestSmall
                                                 : bytes.raw<float>();
}

template <typename Pixel>
struct Drawing {
    explicit Drawing(ByteSource& bytes)
        : width(ReadWidth(bytes)), height(1 + bytes.below(width > 16 ? 4 : 9)) {
        Pixel palette[4];
        for (Pixel& color : palette) {
            for (auto* channel : {&color.alpha, &color.red, &color.green, &color.blue})
                ReadChannel(bytes, *channel);
        }
        // Four pixels a byte; what the bytes do not reach repeats them.
        std::string cells = bytes.text();
        if (cells.empty()) cells.push_back('\0');
        for (std::size_t i = 0; i < static_cast<std::size_t>(width * height); ++i)
            pixels.push_back(palette[cells[i / 4 % cells.size()] >> i % 4 * 2 & 3]);
    }

    [[nodiscard]] Pixel* row(int y) { return pixels.data() + y * width; }
    [[nodiscard]] const Pixel* row(int y) const { return pixels.data() + y * width; }
    [[nodiscard]] std::size_t rowSize() const { return sizeof(Pixel) * static_cast<std::size_t>(width); }

    int width;
    int height;
    std::vector<Pixel> pixels;
};

template <typename Pixel>
bool SamePixels(const World& image, const Drawing<Pixel>& drawing) {
    for (int y = 0; y < drawing.height; ++y) {
        if (std::memcmp(image.row<Pixel>(y), drawing.row(y), drawing.rowSize()) != 0) return false;
    }
    return true;
}

/// Any row pitch; guards, which take time, at times.
MemoryStyle ReadStyle(ByteSource& bytes, PF_PixelFormat format) {
    const A_long channel = standalone::PixelBytes(format) / 4;
    return {.padding = channel * bytes.below(40),
            .misalignment = channel * bytes.below(4),
            .bottomUp = bytes.flag(),
            .guarded = bytes.below(16) == 0};
}

template <typename Pixel>
void RunKernels(ByteSource& bytes, PF_PixelFormat format) {
    const EffectValues values = ReadValues(bytes);
    const MemoryStyle inputStyle = ReadStyle(bytes, format), outputStyle = ReadStyle(bytes, format);
    Drawing<Pixel> drawing(bytes);
    World input(format, drawing.width, drawing.height, inputStyle);
    for (int y = 0; y < drawing.height; ++y)
        std::memcpy(input.row<Pixel>(y), drawing.row(y), drawing.rowSize());

    Drawing<Pixel> plain = drawing;
    for (const InstructionSet set : allInstructionSets) {
        if (set > BestInstructionSet()) continue;
        World output(format, drawing.width, drawing.height, outputStyle);
        WorldHost host(static_cast<unsigned>(values.softness));
        const RenderJob job{values, host.inData(), format, &input.record(), &output.record()};
        Require(DispatchKernel(job, set) == PF_Err_NONE, "a kernel fails");
        Require(host.balanced(), "a kernel keeps something or writes outside its scratch image");
        Require(output.guardsIntact(), "a kernel writes outside the output");
        if (set == InstructionSet::plain) {
            for (int y = 0; y < drawing.height; ++y)
                std::memcpy(plain.row(y), output.row<Pixel>(y), drawing.rowSize());
        }
        Require(SamePixels(output, plain), "two instruction sets differ");
    }
    Require(SamePixels(input, drawing) && input.guardsIntact(), "a kernel writes to the input");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource bytes(data, size);
    switch (bytes.below(3)) {
        case 0:
            RunKernels<PF_Pixel>(bytes, PF_PixelFormat_ARGB32);
            break;
        case 1:
            RunKernels<PF_Pixel16>(bytes, PF_PixelFormat_ARGB64);
            break;
        default:
            RunKernels<PF_PixelFloat>(bytes, PF_PixelFormat_ARGB128);
            break;
    }
    return 0;
}
