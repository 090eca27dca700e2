#include "host_kit/world.h"

#include <gtest/gtest.h>

#include <vector>

namespace host_kit {
namespace {

TEST(WorldTest, OneByteOutsideThePixelsIsNoticed) {
    for (const bool bottomUp : {false, true}) {
        World world(PF_PixelFormat_ARGB32, 4, 4, {8, 0, bottomUp, true, 7});
        const std::vector<std::uint8_t*> outside{
            world.row<std::uint8_t>(0) - 1, world.row<std::uint8_t>(2) + 16,
            world.row<std::uint8_t>(3) - 1, world.row<std::uint8_t>(3) + 16};
        for (std::uint8_t* byte : outside) {
            *byte ^= 1;
            EXPECT_FALSE(world.guardsIntact());
            *byte ^= 1;
        }
        EXPECT_TRUE(world.guardsIntact());
        const auto before = world.checksum();
        *outside.front() ^= 1;
        EXPECT_NE(world.checksum(), before);
    }
}

TEST(WorldTest, RowPitchBeyond31BitsIsRefused) {
    EXPECT_THROW(World(PF_PixelFormat_ARGB128, 1 << 27, 1), std::bad_alloc);
}

}  // namespace
}  // namespace host_kit
