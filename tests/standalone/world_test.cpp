#include "standalone/world.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace standalone {
namespace {

TEST(WorldTest, PixelsAreWhereTheRecordSays) {
    for (const PF_PixelFormat format :
         {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
        for (const MemoryStyle& style :
             {MemoryStyle{}, MemoryStyle{16, 4, false, true, 1}, MemoryStyle{48, 0, true, true, 2},
              MemoryStyle{0, 12, true, false, 0}}) {
            World world(format, 5, 3, style);
            const PF_EffectWorld& record = world.record();
            const auto pixel = static_cast<std::size_t>(PixelBytes(format));
            EXPECT_EQ(record.rowbytes, (style.bottomUp ? -1 : 1) * (5 * PixelBytes(format) + style.padding));
            EXPECT_EQ(world.row<char>(0), record.data);
            for (A_long y = 0; y < 3; ++y) {
                std::memset(world.row<char>(y), y + 1, 5 * pixel);
            }
            EXPECT_EQ(*(static_cast<char*>(record.data) + std::ptrdiff_t{2} * record.rowbytes), 3);
            EXPECT_TRUE(world.guardsIntact());
            const PF_EffectWorld part = world.part({2, 1, 5, 3});
            EXPECT_EQ(part.data, world.row<char>(1) + 2 * pixel);
            EXPECT_EQ(part.width * 100 + part.height, 302);
        }
    }
}

TEST(WorldTest, OneByteOutsideThePixelsIsNoticed) {
    for (const bool bottomUp : {false, true}) {
        World world(PF_PixelFormat_ARGB32, 4, 4, {8, 0, bottomUp, true, 7});
        const std::vector<std::uint8_t*> outside{
            world.row<std::uint8_t>(0) - 1, world.row<std::uint8_t>(2) + 16, world.row<std::uint8_t>(3) - 1,
            world.row<std::uint8_t>(3) + 16};
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
}  // namespace standalone
