// The C interface with arguments of any kind: whatever cannot be done is a status and writes
// nothing, and whatever is done writes the output's pixels only.
#include <algorithm>
#include <vector>

#include "fronts/control_fields.h"
#include "fuzz/fuzz_target.h"
#include "tests/capi/caller.h"
#include "tests/kernel/dice.h"

namespace {

/// Memory that holds both images at most; ASan watches its ends.
using Block = std::vector<std::uint8_t>;

Block DrawBlock(Dice& dice, std::int64_t size) {
    std::uint8_t pattern[64];
    for (std::uint8_t& byte : pattern) byte = static_cast<std::uint8_t>(dice.below(256));
    Block block(static_cast<std::size_t>(size));
    for (std::size_t i = 0; i < block.size(); ++i) block[i] = pattern[i / 3 % 64];
    return block;
}

struct Shape {
    nevrel_order order;
    nevrel_sample sample;
    int32_t width, height;
    std::int64_t pixelBytes;
};

Shape ChooseShape(Dice& dice) {
    constexpr int sampleBytes[] = {1, 2, 2, 2, 4};
    const int order = dice.below(5), sample = dice.below(5);
    return {static_cast<nevrel_order>(order), static_cast<nevrel_sample>(sample),
            dice.between(1, 70), dice.between(1, 12),
            std::int64_t{order == NEVREL_RGB ? 3 : 4} * sampleBytes[sample]};
}

/// An image inside the block, if the rest of the arguments stay as they are.
nevrel_image PlaceImage(Dice& dice, const Shape& shape, Block& block) {
    const std::int64_t row = shape.width * shape.pixelBytes;
    const std::int64_t stride = row + dice.oneOf({0, 1, 2, 4, 40}) * (shape.pixelBytes / 2);
    const std::int64_t extent = stride * (shape.height - 1) + row;
    const std::int64_t room = static_cast<std::int64_t>(block.size()) - extent;
    const auto first = dice.oneOf<std::int64_t>({0, room, dice.below(static_cast<int>(room) + 1)});
    const bool upwards = dice.oneIn(2);
    return {block.data() + first + (upwards ? extent - row : 0),
            static_cast<std::ptrdiff_t>(upwards ? -stride : stride)};
}

nevrel_settings ChooseSettings(Dice& dice) {
    nevrel_settings settings;
    nevrel_settings_init(&settings, sizeof settings);
    for (std::size_t i = 0; i < nevrel_control_count(); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        for (int field = 0; field < (control.kind == NEVREL_COLOR ? 3 : 1); ++field)
            FieldsOf(control, settings)[field] = dice.between(control.minimum, control.maximum);
    }
    return settings;
}

/// Makes one argument anything. Never one that would be true of other memory: such a call is wrong
/// in a way that no library can tell.
bool SpoilOne(Dice& dice, Shape& shape, nevrel_settings& settings, nevrel_image& image) {
    switch (dice.below(4)) {
        case 0: {
            const int controls = static_cast<int>(nevrel_control_count());
            const auto* control = nevrel_control_at(static_cast<std::size_t>(dice.below(controls)));
            *FieldsOf(*control, settings) = dice.any32Bits();
            return false;
        }
        case 1:
            (dice.oneIn(2) ? shape.width : shape.height) =
                dice.oneOf({0, -1, INT32_MIN, INT32_MAX, NEVREL_LARGEST_SIDE + 1});
            return true;
        case 2:
            image.row_bytes = dice.oneOf(
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
    Dice dice(std::span(data, size));
    Shape shape = ChooseShape(dice);
    const std::int64_t imageBytes = (shape.width + 40) * shape.pixelBytes * shape.height;
    nevrel_settings settings = ChooseSettings(dice);
    Caller caller{.givesMemory = !dice.oneIn(16)};
    if (dice.oneIn(16)) caller.cancelAt = static_cast<std::size_t>(dice.below(3));
    Block block = DrawBlock(dice, dice.between(1, 3) * imageBytes);
    nevrel_image input = PlaceImage(dice, shape, block);
    nevrel_image output = dice.oneIn(2) ? input : PlaceImage(dice, shape, block);
    const bool wrong =
        dice.oneIn(4) && SpoilOne(dice, shape, settings, dice.oneIn(2) ? input : output);

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
