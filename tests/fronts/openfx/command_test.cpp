// The bundle and the command make the same bytes of the same picture.
#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"
#include "tests/fronts/openfx/session.h"

namespace {

using FrontsAndCommand = CommandTest;

struct Row {
    const char* file;
    OIIO::TypeDesc::BASETYPE type;
    const char* depth;
    int channels;
    Alpha alpha;
    bool key;
};
constexpr Row rows[] = {
    {"rgb.png", OIIO::TypeDesc::UINT8, "OfxBitDepthByte", 3, Alpha::Straight, false},
    {"rgba.png", OIIO::TypeDesc::UINT16, "OfxBitDepthShort", 4, Alpha::Straight, true},
    {"rgb.exr", OIIO::TypeDesc::HALF, "OfxBitDepthHalf", 3, Alpha::Straight, false},
    {"byte.tif", OIIO::TypeDesc::UINT8, "OfxBitDepthByte", 4, Alpha::Associated, false},
    {"short.tif", OIIO::TypeDesc::UINT16, "OfxBitDepthShort", 4, Alpha::Associated, false},
    {"half.exr", OIIO::TypeDesc::HALF, "OfxBitDepthHalf", 4, Alpha::Associated, false},
    {"float.exr", OIIO::TypeDesc::FLOAT, "OfxBitDepthFloat", 4, Alpha::Associated, false},
    {"byte_key.tif", OIIO::TypeDesc::UINT8, "OfxBitDepthByte", 4, Alpha::Associated, true},
    {"float_key.exr", OIIO::TypeDesc::FLOAT, "OfxBitDepthFloat", 4, Alpha::Associated, true},
};

/// A disc of the key's colour on flat paint, with noise at the top.
TestPicture Draw(const Row& row) {
    TestPicture picture = MakePicture(61, 47, row.channels, row.type, row.alpha);
    constexpr double alpha = 0.7;
    const double share = row.alpha == Alpha::Associated ? alpha : 1;
    DrawDisc(picture, {0.8 * share, 0.2 * share, 0.4 * share, alpha}, {0.1, 0.3, 0.2, 0.5});
    for (int x = 0; x < 61; ++x) {
        for (int c = 0; c < row.channels; ++c) {
            const int noise = (x * 37 + c * 11) % 16;
            SetUnit(picture, x, x % 3, c, c < 3 ? noise / 40.0 : (noise % 3) / 2.0);
        }
    }
    return picture;
}

Frame InHost(const Row& row, const TestPicture& picture) {
    Frame frame;
    frame.depth = row.depth;
    frame.components = row.channels == 3 ? "OfxImageComponentRGB" : "OfxImageComponentRGBA";
    if (row.alpha == Alpha::Associated) frame.premultiplication = "OfxImageAlphaPremultiplied";
    frame.bounds = {0, 0, picture.spec.width, picture.spec.height};
    frame.pixels = picture.samples;

    Session session;
    if (row.key) {
        session.effect.parameter("color_key_enable").value = {1};
        session.effect.parameter("key_color").value = {204 / 255.0, 51 / 255.0, 102 / 255.0};
        session.effect.parameter("key_color_threshold").value = {9};
    }
    Frame output = frame;
    EXPECT_EQ(session.render(frame, output, frame.bounds), ofx::ok);
    return output;
}

TEST_F(FrontsAndCommand, GiveTheSameBytes) {
    for (const Row& row : rows) {
        const TestPicture picture = Draw(row);
        WriteTestPicture(path(row.file), picture);
        const CommandRun made =
            smooth(row.file, row.key ? "--color-key '#cc3366' --key-threshold 9" : "");
        ASSERT_EQ(made.status, 0) << made.errors;
        const TestPicture expected = ReadTestPicture(path(std::string("out_") + row.file));
        EXPECT_NE(expected.samples, picture.samples) << row.file;
        EXPECT_TRUE(InHost(row, picture).pixels == expected.samples) << row.file;
    }
}

}  // namespace
