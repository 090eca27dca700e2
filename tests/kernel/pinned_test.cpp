// The pinned results, by kernel and judge.
#include "tests/kernel/pinned_results.h"

#include <gtest/gtest.h>

#include "tests/kernel/kernel_run.h"

namespace {

template <typename P>
void ExpectChecksum(const PinnedResult& pin, std::uint64_t checksum) {
    const auto picture = PinnedPicture<P>(pin);
    const std::uint64_t kernel = Checksum(RunKernel(pin.values, picture, 1));
    EXPECT_EQ(kernel, checksum) << pin.what << ", " << sizeof(P) / 4 * 8 << " bits: now 0x"
                                << std::hex << kernel;
    EXPECT_EQ(Checksum(judge::Render(pin.values, picture)), checksum) << pin.what << ", the judge";
}

TEST(PinnedResults, AreTheSameInEveryBuild) {
    for (const PinnedResult& pin : PinnedResults()) {
        ExpectChecksum<judge::Pixel8>(pin, pin.checksums[0]);
        ExpectChecksum<judge::Pixel16>(pin, pin.checksums[1]);
        ExpectChecksum<judge::PixelFloat>(pin, pin.checksums[2]);
    }
}

}  // namespace
