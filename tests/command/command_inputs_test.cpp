// What goes into `nevrel smooth` beside picture files: pipes, masks and settings.
#include <string>
#include <utility>

#include "tests/command/picture_test.h"

namespace {

using OIIO::TypeDesc;

/// The samples as they lie in memory.
std::string Bytes(const TestPicture& picture) {
    return {reinterpret_cast<const char*>(picture.samples.data()), picture.samples.size()};
}

/// What goes through a pipe is what a file would hold.
TEST_F(PictureTest, PipesGiveTheSameAsFiles) {
    WriteNoise(path("a.png"), 48, 40);
    EXPECT_EQ(smooth("a.png").status, 0);
    EXPECT_TRUE(run("smooth - -o - <a.png").output == ReadText(path("out_a.png")));
    EXPECT_TRUE(run("smooth - -o - --format tif <a.png").output.starts_with("II"));
    ExpectError(run("smooth - -o - </dev/null"), 1, {"-: the standard input is empty"});
    for (const auto& [type, form] : {std::pair{TypeDesc::UINT8, "rgba"},
                                     {TypeDesc::UINT16, "rgba64le"},
                                     {TypeDesc::FLOAT, "rgbaf32le"}}) {
        TestPicture picture = MakePicture(48, 40, 4, type);
        FillWithNoise(picture, 7);
        write("b.tif", picture);
        const std::string samples = Bytes(smoothed("b.tif")), raw = Bytes(picture);
        WriteText(path("raw"), raw + raw + raw.substr(1));
        const CommandRun frames = run(std::string("smooth <raw --raw 48x40:") + form);
        ExpectError(frames, 1, {"frame 3", "ends within it"});
        EXPECT_TRUE(frames.output == samples + samples) << form;
    }
}

/// White lets all of the effect through, black nothing, grey a part.
TEST_F(PictureTest, MasksHoldTheEffectBack) {
    TestPicture mask = MakePictureFor("mask.png", 60, 40, 1);
    ForEachSample(mask, [&](int x, int y, int) {
        SetUnit(mask, x, y, 0, x < 20 ? 0 : x < 40 ? 1 : 0.5);
    });
    write("mask.png", mask);
    for (const char* file : {"a.png", "a.exr"}) {
        WriteNoise(path(file), 60, 40);
        const TestPicture picture = read(file), all = smoothed(file),
                          some = smoothed(file, "--mask mask.png");
        int between = 0;
        ForEachSample(picture, [&](int x, int y, int c) {
            const double was = Unit(picture, x, y, c), full = Unit(all, x, y, c);
            const double is = Unit(some, x, y, c);
            EXPECT_TRUE(x >= 40 || is == (x < 20 ? was : full)) << file << x << ", " << y;
            if (x >= 40 && is != was && is != full) ++between;
        });
        EXPECT_GT(between, 300) << file;
    }
    WriteNoise(path("small.png"), 8, 8, 1);
    ExpectError(run("smooth a.png -o out.png --mask small.png"), 1, {"small.png", "8 x 8", "60 x"});
}

/// A look found here is the default where the file lies beside the module.
TEST_F(PictureTest, SettingsGoThroughFiles) {
    WriteNoise(path("a.png"), 8, 8);
    const std::string look =
        "--softness 33 --bias 4 --color-threshold 5 --color-key '#123' --key-threshold 6 "
        "--invert";
    ASSERT_EQ(run("smooth a.png -o b.png --save-settings s.ini " + look).status, 0);
    EXPECT_EQ(ReadText(path("s.ini")),
              "[defaults]\nColorThreshold=5\nSoftness=33\nBias=4\nColorkeyEnable=1\n"
              "KeycolorR=17\nKeycolorG=34\nKeycolorB=51\nColorkeyThreshold=6\nColorkeyInvert=1\n");
    ExpectWords(
        run("smooth a.png -o b.png --dry-run --settings s.ini --softness 7 --no-color-key").output,
        {"Softness=7\nBias=4\nColorkeyEnable=0\nKeycolorR=17\n"});
    for (const auto& [key, range] : {std::pair{"Bias", "0 to 100"}, {"KeycolorR", "0 to 255"}}) {
        WriteText(path("bad.ini"),
                  std::string("[ui]\nColorkeyGroup=9\n[defaults]\n") + key + "=256\n");
        ExpectError(run("smooth a.png -o b.png --settings bad.ini"), 2,
                    {std::string("bad.ini:4: ") + key + " is '256'", range});
    }
}

}  // namespace
