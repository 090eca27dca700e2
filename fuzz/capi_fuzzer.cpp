// The C interface with arguments of any kind: whatever cannot be done is a status and writes
// nothing, and whatever is done writes the output's pixels only.
#include <algorithm>
#include <iterator>
#include <vector>

#include "fuzz/fuzz_target.h"
#include "tests/capi/caller.h"

namespace {

/// Memory that holds both images at most; ASan watches its ends.
using Block = std::vector<std::uint8_t>;

Block ReadBlock(ByteSource& source, std::int64_t size) {
    Block block(static_cast<std::size_t>(size));
    const std::string text = source.text(64);
    for (std::size_t i = 0; i < block.size() && !text.empty(); ++i)
        block[i] = static_cast<std::uint8_t>(text[i / 3 % text.size()]);
    return block;
}

struct Shape {
    nevrel_order order;
    nevrel_sample sample;
    int32_t width, height;
    std::int64_t pixelBytes;
};

Shape ReadShape(ByteSource& source) {
    constexpr int sampleBytes[] = {1, 2, 2, 2, 4};
    const int order = source.below(4), sample = source.below(5);
    return {static_cast<nevrel_order>(order), static_cast<nevrel_sample>(sample),
            1 + source.below(70), 1 + source.below(12),
            std::int64_t{order == NEVREL_RGB ? 3 : 4} * sampleBytes[sample]};
}

/// An image inside the block, if the rest of the arguments stay as they are.
nevrel_image PlaceImage(ByteSource& source, const Shape& shape, Block& block) {
    const std::int64_t row = shape.width * shape.pixelBytes;
    const std::int64_t stride = row + source.oneOf({0, 1, 2, 4, 40}) * (shape.pixelBytes / 2);
    const std::int64_t extent = stride * (shape.height - 1) + row;
    const auto size = static_cast<std::int64_t>(block.size());
    std::int64_t first = source.flag() ? 0 : size - extent;
    if (source.below(4) == 0) first = source.raw<std::uint16_t>() % (size - extent + 1);
    const bool upwards = source.flag();
    return {block.data() + first + (upwards ? extent - row : 0),
            static_cast<std::ptrdiff_t>(upwards ? -stride : stride)};
}

nevrel_settings ReadSettings(ByteSource& source) {
    nevrel_settings settings;
    nevrel_settings_init(&settings, sizeof settings);
    settings.color_threshold = 1 + source.below(255);
    settings.softness = source.below(101);
    settings.bias = source.below(101);
    settings.color_key_enable = source.flag() ? 1 : 0;
    for (int32_t* field :
         {&settings.key_red, &settings.key_green, &settings.key_blue, &settings.key_threshold})
        *field = source.byte();
    settings.key_invert = source.flag() ? 1 : 0;
    return settings;
}

/// Makes one argument anything. Never one that would be true of other memory: such a call is wrong
/// in a way that no library can tell.
bool SpoilOne(ByteSource& source, Shape& shape, nevrel_settings& settings, nevrel_image& image) {
    int32_t* fields[] = {&settings.color_threshold,  &settings.softness,      &settings.bias,
                         &settings.color_key_enable, &settings.key_red,       &settings.key_green,
                         &settings.key_blue,         &settings.key_threshold, &settings.key_invert};
    switch (source.below(4)) {
        case 0:
            *fields[source.below(9)] = source.raw<int32_t>();
            return false;
        case 1:
            (source.flag() ? shape.width : shape.height) =
                source.oneOf({0, -1, INT32_MIN, INT32_MAX, NEVREL_LARGEST_SIDE + 1});
            return true;
        case 2:
            image.row_bytes = source.oneOf(
                {PTRDIFF_MAX, PTRDIFF_MIN, PTRDIFF_MIN + 1, PTRDIFF_MAX / 2, std::ptrdiff_t{0}});
            return shape.height > 1;
        default:
            image.pixels = nullptr;
            return true;
    }
}

/// Takes the output's pixels back, so that only what was written beside them differs.
void Restore(const Shape& shape, const nevrel_image& output, const Block& before, Block& block) {
    for (int y = 0; y < shape.height; ++y) {
        auto* row = static_cast<std::uint8_t*>(output.pixels) + y * output.row_bytes;
        std::copy_n(&before[static_cast<std::size_t>(row - block.data())],
                    shape.width * shape.pixelBytes, row);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource source(data, size);
    Shape shape = ReadShape(source);
    const std::int64_t imageBytes = (shape.width + 40) * shape.pixelBytes * shape.height;
    nevrel_settings settings = ReadSettings(source);
    Caller caller{.givesMemory = source.below(16) != 0};
    if (source.below(16) == 0) caller.cancelAt = static_cast<std::size_t>(source.below(3));
    const int images = 1 + source.below(3);
    Block block = ReadBlock(source, images * imageBytes);
    nevrel_image input = PlaceImage(source, shape, block);
    nevrel_image output = source.flag() ? input : PlaceImage(source, shape, block);
    const bool wrong =
        source.below(4) == 0 && SpoilOne(source, shape, settings, source.flag() ? input : output);

    const Block before = block;
    const nevrel_callbacks callbacks = caller.callbacks();
    const nevrel_status status = nevrel_smooth(&settings, shape.order, shape.sample, shape.width,
                                               shape.height, &input, &output, &callbacks);
    Require(caller.held == 0, "memory kept");
    for (const int32_t done : caller.rowsDone)
        Require(done >= 0 && done < shape.height, "rows done out of range");
    Require(!wrong || (status != NEVREL_OK && status != NEVREL_CANCELLED), "wrong, but done");
    if (status == NEVREL_OK || status == NEVREL_CANCELLED) Restore(shape, output, before, block);
    Require(block == before, "written beside the output, or although refused");
    return 0;
}
