// What `nevrel smooth` does to the samples of real files of every format and depth.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <set>

#include "nevrel.h"
#include "tests/command/picture_test.h"

namespace {

using OIIO::TypeDesc;

struct FileKind {
    const char* name;
    TypeDesc type;
    int channels;
    Alpha alpha = Alpha::Straight;
    int bits = 0;
};

const FileKind fileKinds[] = {
    {"rgb8.png", TypeDesc::UINT8, 3},
    {"rgba8.png", TypeDesc::UINT8, 4},
    {"ya8.png", TypeDesc::UINT8, 2},
    {"rgba16.png", TypeDesc::UINT16, 4},
    {"y16.png", TypeDesc::UINT16, 1},
    {"straight8.tif", TypeDesc::UINT8, 4},
    {"associated8.tif", TypeDesc::UINT8, 4, Alpha::Associated},
    {"straight16.tif", TypeDesc::UINT16, 4},
    {"associated16.tif", TypeDesc::UINT16, 4, Alpha::Associated},
    {"straightfloat.tif", TypeDesc::FLOAT, 4},
    {"associatedfloat.tif", TypeDesc::FLOAT, 4, Alpha::Associated},
    {"rgba.tga", TypeDesc::UINT8, 4},
    {"y.tga", TypeDesc::UINT8, 1},
    {"rgb.bmp", TypeDesc::UINT8, 3},
    {"rgba.bmp", TypeDesc::UINT8, 4},
    {"rgb10.dpx", TypeDesc::UINT16, 3, Alpha::Straight, 10},
    {"rgba10.dpx", TypeDesc::UINT16, 4, Alpha::Straight, 10},
    {"rgba12.dpx", TypeDesc::UINT16, 4, Alpha::Straight, 12},
    {"rgba16.dpx", TypeDesc::UINT16, 4, Alpha::Straight, 16},
    {"half.exr", TypeDesc::HALF, 4, Alpha::Associated},
    {"float.exr", TypeDesc::FLOAT, 4, Alpha::Associated},
    {"y.exr", TypeDesc::HALF, 1, Alpha::Associated},
};

TestPicture MakePictureOf(const FileKind& kind, int width, int height) {
    TestPicture picture = MakePicture(width, height, kind.channels, kind.type, kind.alpha);
    if (kind.bits > 0) picture.spec.attribute("oiio:BitsPerSample", kind.bits);
    return picture;
}

using Colors = std::vector<double>;

class PictureKindsTest : public PictureTest {
  protected:
    PictureKindsTest() { std::filesystem::create_directory(path("in")); }

    /// Draws discs of straight colours in "in" in all files with so many channels.
    [[nodiscard]] std::vector<FileKind> drawDiscs(int channels, const Colors& inside,
                                                  const Colors& outside) const {
        std::vector<FileKind> kinds;
        for (const FileKind& kind : fileKinds) {
            if (kind.channels != channels) continue;
            kinds.push_back(kind);
            TestPicture picture = MakePictureOf(kind, 48, 40);
            const auto stored = [&kind](Colors colors) {
                const bool multiplied = colors.size() == 4 && kind.alpha == Alpha::Associated;
                for (std::size_t c = 0; multiplied && c < 3; ++c) colors[c] *= colors[3];
                return colors;
            };
            DrawDisc(picture, stored(inside), stored(outside));
            write(std::string("in/") + kind.name, picture);
        }
        return kinds;
    }
    /// Makes pictures in the folder `to` of all in the folder "in".
    void smoothAll(const std::string& to, const std::string& options = "") const {
        const CommandRun result = run("smooth in/* -o " + to + "/ " + options);
        EXPECT_EQ(result.status, 0) << result.errors;
    }
    /// Without smoothing, samples and description of the files in "in" stay; the window and the
    /// metadata are part of the description.
    void expectAllKept() const {
        smoothAll("kept", "--softness 0");
        for (const std::string& name : files("in")) {
            SCOPED_TRACE(name);
            TestPicture before = read("in/" + name), after = read("kept/" + name);
            EXPECT_EQ(before.samples, after.samples);
            for (TestPicture* picture : {&before, &after}) picture->spec.extra_attribs.sort();
            EXPECT_EQ(before.spec.to_xml(), after.spec.to_xml());
        }
    }
};

TEST_F(PictureKindsTest, SoftnessZeroKeepsFilesAsTheyAre) {
    const TypeDesc profileType(TypeDesc::UINT8, 160);
    const std::array<std::uint8_t, 160> anyBytes{1, 2, 3};
    unsigned seed = 1;
    for (const FileKind& kind : fileKinds) {
        TestPicture picture = MakePictureOf(kind, 61, 37);
        FillWithNoise(picture, seed++);
        picture.spec.attribute("Copyright", "somebody");
        picture.spec.attribute("DateTime", "2001:02:03 04:05:06");
        picture.spec.attribute("XResolution", 72.0F);
        picture.spec.attribute("YResolution", 72.0F);
        const std::string name = kind.name;
        if (name.ends_with("tif")) picture.spec.attribute("ICCProfile", profileType, &anyBytes);
        if (name.ends_with("png")) picture.spec.attribute("oiio:Gamma", 1.8F);
        write("in/" + name, picture);
    }
    TestPicture window = MakeNoise("window.exr", 48, 40);
    window.spec.set_roi(OIIO::ROI(10, 58, -5, 35));
    window.spec.set_roi_full(OIIO::ROI(0, 100, 0, 80));
    write("in/window.exr", window);
    TestPicture tiles = MakeNoise("tiles.tif", 50, 41);
    tiles.spec.tile_width = tiles.spec.tile_height = 16;
    write("in/tiles.tif", tiles);
    // The mark of associated alpha in a TGA's extension area, whose place its footer tells.
    WriteNoise(path("in/associated.tga"), 20, 10);
    std::string bytes = ReadText(path("in/associated.tga"));
    std::uint32_t extensionArea = 0;
    std::memcpy(&extensionArea, &bytes[bytes.size() - 26], 4);
    bytes.at(extensionArea + 494) = 4;
    WriteText(path("in/associated.tga"), bytes);
    expectAllKept();
    for (const char* name :
         {"a.tif", "b.tif"})  // what lies in tiles beyond the border is no chance
        ASSERT_EQ(run(std::string("smooth in/tiles.tif -o ") + name).status, 0);
    EXPECT_EQ(ReadText(path("a.tif")), ReadText(path("b.tif")));
    ExpectError(run("smooth -o out.png in/window.exr"), 1, {"out.png", "data window"});
}

/// Lossy compression and bilevel files give way to what holds the result.
TEST_F(PictureKindsTest, ResultsAreNotLostInTheFilesOwnEncoding) {
    TestPicture lossy = MakeNoise("lossy.exr", 64, 48);
    lossy.spec.attribute("compression", "dwaa");
    write("lossy.exr", lossy);
    EXPECT_EQ(smoothed("lossy.exr", "--softness 0").samples, read("lossy.exr").samples);

    TestPicture bilevel = MakePicture(48, 40, 1, TypeDesc::UINT8);
    bilevel.spec.attribute("oiio:BitsPerSample", 1);
    DrawDisc(bilevel, {0}, {1});
    write("bilevel.tif", bilevel);
    const std::vector<std::byte> samples = smoothed("bilevel.tif").samples;
    EXPECT_GT(std::set(samples.begin(), samples.end()).size(), 2U);
}

TEST_F(PictureKindsTest, UnlikeColorsAndUnnamedChannelsAreRefused) {
    TestPicture cmyk = MakePicture(8, 8, 4, TypeDesc::UINT8);
    cmyk.spec.channelnames = {"C", "M", "Y", "K"};
    cmyk.spec.alpha_channel = -1;
    cmyk.spec.attribute("tiff:ColorSpace", "CMYK");
    write("cmyk.tif", cmyk);
    ExpectError(smooth("cmyk.tif"), 1, {"cmyk.tif", "CMYK"});

    TestPicture depth = MakePicture(8, 8, 5, TypeDesc::HALF);
    depth.spec.channelnames = {"R", "G", "B", "A", "Z"};
    write("depth.exr", depth);
    for (const std::string out : {"out.dpx", "out.tif", "out.tga"})
        ExpectError(run("smooth -o " + out + " depth.exr"), 1, {out, "cannot hold these channels"});
}

/// How far apart two samples of a type lie; of half floats twice the most.
double StepOf(const TypeDesc& type, int bits = 0) {
    if (type == TypeDesc::UINT8) return 1.0 / 255;
    if (type == TypeDesc::UINT16) return 1.0 / (bits > 0 ? (1 << bits) - 1 : 32768);
    return type == TypeDesc::HALF ? 0.001 : 0;
}

/// Samples of any number of bits hold thirds exactly.
TEST_F(PictureKindsTest, SmoothsAtAnyDepthAndInThePicturesOwnAlphaConvention) {
    const auto kinds = drawDiscs(4, {1.0 / 3, 2.0 / 3, 0, 2.0 / 3}, {2.0 / 3, 0, 1.0 / 3, 1});
    smoothAll("own");  // each at the depth of its samples
    const TestPicture expected = read("own/straightfloat.tif");
    EXPECT_NE(expected.samples, read("in/straightfloat.tif").samples);
    for (const auto& [depth, type] : {std::pair{std::string("8"), TypeDesc::UINT8},
                                      {"16", TypeDesc::UINT16},
                                      {"float", TypeDesc::FLOAT}}) {
        smoothAll(depth, "--depth " + depth);
        for (const FileKind& kind : kinds) {
            const TestPicture result = read(depth + "/" + kind.name);
            const bool associated = kind.alpha == Alpha::Associated;
            // Division by alpha makes more of what samples could not hold; weights are rounded too.
            const double tolerance = (associated ? 1.25 : 0.5) * StepOf(kind.type, kind.bits) +
                                     StepOf(type) + 2.0 / 32768;
            ForEachSample(result, [&](int x, int y, int c) {
                const double factor = associated && c < 3 ? Unit(expected, x, y, 3) : 1;
                EXPECT_NEAR(Unit(result, x, y, c), Unit(expected, x, y, c) * factor, tolerance)
                    << kind.name << ' ' << depth << " at " << x << ", " << y;
            });
            const bool own =
                kind.type == type || (kind.type == TypeDesc::HALF && type == TypeDesc::FLOAT);
            EXPECT_EQ(result.samples == read(std::string("own/") + kind.name).samples, own)
                << kind.name << ' ' << depth;
        }
    }
}

nevrel_sample SampleOf(const TypeDesc& type) {
    if (type == TypeDesc::UINT8) return NEVREL_UINT8;
    if (type == TypeDesc::UINT16) return NEVREL_UINT16;
    return type == TypeDesc::HALF ? NEVREL_HALF : NEVREL_FLOAT;
}

/// And so do all fronts, which are held to it.
TEST_F(PictureKindsTest, TheCInterfaceMakesTheSameBytes) {
    std::vector<FileKind> kinds;
    for (const FileKind& kind : fileKinds) {
        if (kind.channels < 3 || kind.bits > 0) continue;
        TestPicture picture = MakePictureOf(kinds.emplace_back(kind), 61, 37);
        FillWithNoise(picture, 3);
        write(std::string("in/") + kind.name, picture);
    }
    smoothAll("plain");
    smoothAll("keyed", "--color-key white --key-threshold 90");
    nevrel_settings settings;
    nevrel_settings_init(&settings, sizeof settings);
    settings.key_threshold = 90;
    for (const FileKind& kind : kinds) {
        const nevrel_order order = kind.channels == 3                ? NEVREL_RGB
                                   : kind.alpha == Alpha::Associated ? NEVREL_RGBA_PREMULTIPLIED
                                                                     : NEVREL_RGBA;
        for (const std::string made : {"plain/", "keyed/"}) {
            settings.color_key_enable = made == "keyed/";
            if (order == NEVREL_RGB && settings.color_key_enable != 0) continue;
            TestPicture picture = read(std::string("in/") + kind.name);
            const auto rowBytes = static_cast<std::ptrdiff_t>(picture.samples.size() / 37);
            const nevrel_image image{picture.samples.data(), rowBytes};
            EXPECT_EQ(nevrel_smooth(&settings, order, SampleOf(kind.type), 61, 37, &image, &image,
                                    nullptr),
                      NEVREL_OK);
            EXPECT_TRUE(read(made + kind.name).samples == picture.samples) << made << kind.name;
        }
    }
}

TEST_F(PictureKindsTest, ColorKeyAddsAlphaAndKeepsTheColorBehindIt) {
    std::vector<FileKind> kinds = drawDiscs(3, {0, 0, 0}, {1, 0, 0});
    for (const FileKind& kind : drawDiscs(1, {0}, {1})) kinds.push_back(kind);
    for (const std::string color : {"red", "white"}) {
        smoothAll(color, "--color-key " + color);
        smoothAll(color + "inverted", "--invert --color-key " + color);
    }
    for (const FileKind& kind : kinds) {
        const std::string name = kind.name, color = kind.channels == 1 ? "white" : "red";
        const int alpha = name == "y.tga" ? 3 : kind.channels;  // where grey becomes colour
        for (const bool inverted : {false, true}) {
            const TestPicture made = read(color + (inverted ? "inverted/" : "/") + name);
            ASSERT_EQ(made.spec.nchannels, alpha + 1) << name;
            EXPECT_EQ(Unit(made, 0, 0, alpha), inverted) << name;
            EXPECT_EQ(Unit(made, 24, 20, alpha), !inverted) << name;
            EXPECT_EQ(Unit(made, 0, 0, 0), inverted || kind.alpha == Alpha::Straight) << name;
            std::set<double> alphas;
            for (int x = 0; x < 48; ++x) alphas.insert(Unit(made, x, 7, alpha));
            EXPECT_GT(alphas.size(), 2U) << name << " is not soft";
        }
    }
}

TEST_F(PictureKindsTest, OtherChannelsAreCarriedOver) {
    TestPicture picture = MakePicture(48, 40, 9, TypeDesc::HALF);
    picture.spec.channelnames = {"R",         "G",         "B",         "Z",        "id",
                                 "diffuse.R", "diffuse.G", "diffuse.B", "diffuse.A"};
    picture.spec.channelformats.assign(9, TypeDesc::HALF);
    picture.spec.channelformats[3] = TypeDesc::FLOAT;
    picture.spec.channelformats[4] = TypeDesc::UINT32;
    picture.samples.resize(picture.spec.image_bytes(true));
    DrawDisc(picture, {0, 0, 0, 7, 0, 0, 0.5, 0, 0.5}, {1, 1, 1, 9, 0, 1, 0.25, 1, 1});
    for (unsigned y = 0; y < 40; ++y) {
        const std::uint32_t id = 0xFFFFFFF0U + y;
        std::memcpy(
            picture.samples.data() + picture.offset(static_cast<int>(y), static_cast<int>(y), 4),
            &id, sizeof id);
    }
    write("in.exr", picture);
    const TestPicture input = read("in.exr");
    const auto changedChannels = [&](const std::string& options) {
        const TestPicture output = smoothed("in.exr", options);
        std::string changed;
        for (const std::string& name : input.spec.channelnames) {
            const int from = input.spec.channelindex(name), to = output.spec.channelindex(name);
            EXPECT_EQ(input.spec.channelformat(from), output.spec.channelformat(to)) << name;
            bool same = true;
            for (int i = 0; i < 48 * 40; ++i)
                same &= Unit(input, i % 48, i / 48, from) == Unit(output, i % 48, i / 48, to);
            if (!same) changed += name + " ";
        }
        return changed + std::to_string(output.spec.nchannels);
    };
    EXPECT_EQ(changedChannels(""), "R G B 9");
    EXPECT_EQ(changedChannels("--color-key '#ffffff'"), "R G B 10");
    EXPECT_EQ(changedChannels("--layer diffuse"), "diffuse.R diffuse.G diffuse.B diffuse.A 9");
    EXPECT_EQ(changedChannels("--layer diffuse --softness 0"), "9");
    ExpectError(smooth("in.exr", "--layer specular"), 1, {"specular", "layers are diffuse"});
    for (const std::size_t c : {0, 1, 2}) picture.spec.channelnames[c].insert(0, "beauty.");
    write("layers.exr", picture);
    ExpectError(smooth("layers.exr"), 1, {"--layer", "beauty, diffuse"});
    ExpectError(run("smooth -o out.tif in.exr"), 1, {"out.tif", "channel id"});
    ExpectError(run("smooth -o out.png in.exr"), 1, {"out.png", "png cannot hold"});
}

TEST_F(PictureKindsTest, FilesKeepAllTheirPartsOrAreRefused) {
    for (const std::string name : {"parts.exr", "pages.tif"}) {
        std::vector<TestPicture> parts;
        for (unsigned i = 0; i < 3; ++i) {
            parts.push_back(MakeNoise(name, 48, 40, 4, i));
            parts[i].spec.attribute("oiio:subimagename", "part" + std::to_string(i));
        }
        WriteTestPictures(path(name), parts);
        ExpectError(smooth(name), 0, {name, "part 1 of 3", "--all-parts"});
        for (const int i : {0, 1, 2}) {
            const bool same = read("out_" + name, i).samples == read(name, i).samples;
            EXPECT_EQ(same, i > 0) << name << i;
        }
        EXPECT_EQ(smooth(name, "--all-parts").errors, "");
        for (const int i : {0, 1, 2})
            EXPECT_NE(read("out_" + name, i).samples, read(name, i).samples) << name << i;
        ExpectError(run("smooth -o out.png " + name), 1, {"out.png", "3 parts"});
    }
    // The link to the second page stands behind the twelve bytes of each entry of the first one.
    std::string bytes = ReadText(path("pages.tif"));
    std::uint32_t directory = 0;
    std::uint16_t entries = 0;
    std::memcpy(&directory, &bytes[4], sizeof directory);
    std::memcpy(&entries, &bytes[directory], sizeof entries);
    bytes[directory + 2 + entries * 12U + 3] = 1;
    WriteText(path("damaged.tif"), bytes);
    ExpectError(smooth("damaged.tif"), 1, {"damaged.tif", "page 2"});
}

/// Its own alpha convention; and no time of writing, which would make other bytes of the same
/// picture each time.
TEST_F(PictureKindsTest, AnotherFormatGetsWhatItIsUsedTo) {
    TestPicture straight = MakePictureFor("in.png", 48, 40);
    DrawDisc(straight, {1, 0.5, 0, 0.4}, {0, 0.5, 1, 0.8});
    write("in.png", straight);
    for (const std::string name : {"out.exr", "out.tif", "out.tga", "out.dpx"}) {
        ASSERT_EQ(run("smooth --softness 0 -o " + name + " in.png").status, 0) << name;
        const std::string date = read(name).spec.get_string_attribute("DateTime");
        EXPECT_EQ(date.find_first_of("0123456789"), std::string::npos) << name << ": " << date;
    }
    ExpectError(run("smooth --softness 0 -o back.png out.exr"), 0, {"back.png", "linear"});
    EXPECT_EQ(ReadText(path("back.png")).find("gAMA"), std::string::npos);
    const TestPicture associated = read("out.exr"), back = read("back.png");
    ForEachSample(straight, [&](int x, int y, int c) {
        const double alpha = c < 3 ? Unit(straight, x, y, 3) : 1;
        EXPECT_NEAR(Unit(associated, x, y, c), Unit(straight, x, y, c) * alpha, 0.0003);
        EXPECT_NEAR(Unit(back, x, y, c), Unit(straight, x, y, c), 0.001);
    });
}

TEST_F(PictureKindsTest, FiniteFloatPicturesStayFiniteAndOthersKeepTheirFaultsWhereTheyAre) {
    TestPicture picture = MakePicture(48, 40, 4, TypeDesc::FLOAT, Alpha::Associated);
    DrawDisc(picture, {1e30, 1, 1, 1e-30}, {0.5, 0.5, 0.5, 1});
    write("tiny_alpha.exr", picture);
    const TestPicture tiny = smoothed("tiny_alpha.exr");
    ForEachSample(tiny, [&](int x, int y, int c) {
        EXPECT_TRUE(std::isfinite(Unit(tiny, x, y, c))) << x << ", " << y;
    });

    DrawDisc(picture, {0.9, 0.1, 0.4, 0.5}, {0.5, 0.5, 0.5, 1});
    write("in/clean.exr", picture);
    SetUnit(picture, 5, 5, 0, std::nan(""));
    SetUnit(picture, 40, 30, 1, INFINITY);
    write("in/faults.exr", picture);
    expectAllKept();
    smoothAll("out");
    const TestPicture faults = read("out/faults.exr"), clean = read("out/clean.exr");
    ForEachSample(faults, [&](int x, int y, int c) {
        const bool near = std::hypot(x - 5, y - 5) < 3 || std::hypot(x - 40, y - 30) < 3;
        EXPECT_TRUE(near || Unit(faults, x, y, c) == Unit(clean, x, y, c)) << x << ", " << y;
    });
}

}  // namespace
