// The C interface with arguments of any kind: whatever cannot be done is a status and writes
// nothing, and whatever is done writes the output's pixels only.
#include <vector>

#include "fronts/control_fields.h"
#include "fuzz/fuzz_target.h"
#include "tests/capi/caller.h"
#include "tests/kernel/hostile_image.h"

namespace {

using Image = HostileImage<std::uint8_t>;

/// All arguments of a call but the callbacks.
struct Call {
    nevrel_settings settings;
    nevrel_order order;
    nevrel_sample sample;
    std::int32_t width, height;
    nevrel_image input, output;
};

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

/// Makes one argument anything, and returns whether it is now wrong for sure. Never anything that
/// would be true of other memory: such a call is wrong in a way that no library can tell.
bool SpoilOne(Dice& dice, Call& call, int rowBytes, int sampleBytes) {
    nevrel_image& image = dice.oneIn(2) ? call.input : call.output;
    switch (dice.below(5)) {
        case 0: {
            const int controls = static_cast<int>(nevrel_control_count());
            const auto* control = nevrel_control_at(static_cast<std::size_t>(dice.below(controls)));
            *FieldsOf(*control, call.settings) = dice.any32Bits();
            return false;
        }
        case 1:
            (dice.oneIn(2) ? call.width : call.height) =
                dice.oneOf({0, -1, INT32_MIN, INT32_MAX, NEVREL_LARGEST_SIDE + 1});
            return true;
        case 2:
            image.row_bytes = dice.oneOf(
                {PTRDIFF_MAX, PTRDIFF_MAX - 1, PTRDIFF_MIN, PTRDIFF_MIN + 1, std::ptrdiff_t{0}});
            return call.height > 1;
        case 3:  // rows that overlap
            call.output = call.input;
            call.output.pixels = static_cast<std::uint8_t*>(call.input.pixels) +
                                 dice.between(1, rowBytes / sampleBytes - 1) * sampleBytes;
            return true;
        default:
            image.pixels = nullptr;
            return true;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Dice dice(std::span(data, size));
    const int order = dice.below(5), sample = dice.below(5);
    const int width = dice.between(1, 70), height = dice.between(1, 12);
    const int sampleBytes = sample == NEVREL_UINT8 ? 1 : sample == NEVREL_FLOAT ? 4 : 2;
    const int rowBytes = width * (order == NEVREL_RGB ? 3 : 4) * sampleBytes;
    Image images[] = {Image(rowBytes, height, RandomLayout(sampleBytes, dice)),
                      Image(rowBytes, height, RandomLayout(sampleBytes, dice))};
    std::vector<std::uint8_t> before(static_cast<std::size_t>(rowBytes * height)), blank(before);
    std::uint8_t pattern[64];
    for (std::uint8_t& byte : pattern) byte = static_cast<std::uint8_t>(dice.below(256));
    for (std::size_t i = 0; i < before.size(); ++i) before[i] = pattern[i / 3 % 64];
    images[0].load(before.data());
    images[1].load(blank.data());
    const nevrel_image input{images[0].row(0), images[0].pitch()};
    const nevrel_image other{images[1].row(0), images[1].pitch()};
    const bool inPlace = dice.oneIn(2);
    Call call{
        ChooseSettings(dice),   nevrel_order{order}, nevrel_sample{sample}, width, height, input,
        inPlace ? input : other};
    const bool wrong = dice.oneIn(4) && SpoilOne(dice, call, rowBytes, sampleBytes);

    Caller caller{.givesMemory = !dice.oneIn(16)};
    if (dice.oneIn(16)) caller.cancelAt = static_cast<std::size_t>(dice.below(3));
    const nevrel_callbacks callbacks = caller.callbacks();
    const nevrel_status status = nevrel_smooth(&call.settings, call.order, call.sample, call.width,
                                               call.height, &call.input, &call.output, &callbacks);
    const bool started = status == NEVREL_OK || status == NEVREL_CANCELLED;
    Require(caller.held == 0, "memory kept");
    for (const int32_t done : caller.rowsDone)
        Require(done >= 0 && done < height, "rows done out of range");
    Require(!wrong || !started, "wrong, but done");
    Require((started && inPlace) || images[0].holds(before.data()), "the input was written");
    Require((started && !inPlace) || images[1].holds(blank.data()), "written although refused");
    Require(images[0].surroundingsIntact() && images[1].surroundingsIntact(), "written beside");
    return 0;
}
