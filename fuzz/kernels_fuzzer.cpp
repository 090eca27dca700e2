// The nine kernels with the values and the pictures of any host: every instruction set gives what
// the plain form gives, and nothing but the output's pixels is written.
#include "fuzz/fuzz_target.h"
#include "tests/kernel/any_values.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Dice dice(std::span(data, size));
    constexpr void (*runs[])(Dice&) = {RunWithAnyValues<judge::Pixel8>,
                                       RunWithAnyValues<judge::Pixel16>,
                                       RunWithAnyValues<judge::PixelFloat>};
    runs[dice.below(3)](dice);
    Require(!testing::Test::HasFailure(), "see above");
    return 0;
}
