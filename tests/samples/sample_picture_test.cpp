// The sample picture in the tree is what the generator draws.
#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <vector>

#include "samples/scene.h"

namespace {

TEST(SamplePicture, IsWhatTheGeneratorDraws) {
    const auto input = OIIO::ImageInput::open(NEVREL_SAMPLES "/cel.png");
    ASSERT_TRUE(input) << OIIO::geterror();
    const Image8 drawn = SamplePicture();
    const OIIO::ImageSpec& spec = input->spec();
    ASSERT_EQ(spec.width, drawn.width);
    ASSERT_EQ(spec.height, drawn.height);
    ASSERT_EQ(spec.nchannels, 3);

    std::vector<unsigned char> stored(drawn.pixels.size() * 3);
    ASSERT_TRUE(input->read_image(0, 0, 0, 3, OIIO::TypeDesc::UINT8, stored.data()));
    std::size_t differing = 0;
    for (std::size_t i = 0; i < drawn.pixels.size(); ++i) {
        const PF_Pixel there{255, stored[3 * i], stored[3 * i + 1], stored[3 * i + 2]};
        differing += SameColour(drawn.pixels[i], there) ? 0 : 1;
    }
    EXPECT_EQ(differing, 0U) << "draw it again: build/linux/draw_samples samples/cel.png";
}

}  // namespace
