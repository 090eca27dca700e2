// What `nevrel smooth` does to the samples of real files of every format and depth.
#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>

#include "host_kit/frame.h"
#include "host_kit/module.h"
#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

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

class PictureTest : public CommandTest {
  protected:
    void write(const std::string& name, const TestPicture& picture) const {
        WriteTestPicture(path(name), picture);
    }
    [[nodiscard]] TestPicture read(const std::string& name, int part = 0) const {
        return ReadTestPicture(path(name), part);
    }
    /// What the command makes of the file.
    [[nodiscard]] TestPicture smoothed(const std::string& name,
                                       const std::string& options = "") const {
        const CommandRun result = smooth(name, options);
        EXPECT_EQ(result.status, 0) << name << result.errors;
        return result.status == 0 ? read("out_" + name) : TestPicture{};
    }
    /// Without smoothing, samples and description of the file stay; the window and the metadata are
    /// part of the description.
    void expectKept(const std::string& name) const {
        TestPicture before = read(name), after = smoothed(name, "--softness 0");
        EXPECT_EQ(before.samples, after.samples) << name;
        EXPECT_EQ(before.spec.channelnames, after.spec.channelnames) << name;
        EXPECT_EQ(before.spec.roi(), after.spec.roi()) << name;
        EXPECT_EQ(before.spec.roi_full(), after.spec.roi_full()) << name;
        for (TestPicture* picture : {&before, &after}) picture->spec.extra_attribs.sort();
        EXPECT_EQ(before.spec.to_xml(), after.spec.to_xml()) << name;
    }
};

TestPicture MakePictureOf(const FileKind& kind, int width, int height) {
    TestPicture picture = MakePicture(width, height, kind.channels, kind.type, kind.alpha);
    if (kind.bits > 0) picture.spec.attribute("oiio:BitsPerSample", kind.bits);
    return picture;
}

TEST_F(PictureTest, SoftnessZeroReproducesEverySample) {
    unsigned seed = 1;
    for (const FileKind& kind : fileKinds) {
        TestPicture picture = MakePictureOf(kind, 61, 37);
        FillWithNoise(picture, seed++);
        picture.spec.attribute("Copyright", "somebody");
        picture.spec.attribute("DateTime", "2001:02:03 04:05:06");
        picture.spec.attribute("XResolution", 72.0F);
        picture.spec.attribute("YResolution", 72.0F);
        write(kind.name, picture);
        expectKept(kind.name);
    }
}

TEST_F(PictureTest, ColorSpacesAreKept) {
    TestPicture profile = MakePicture(48, 40, 3, TypeDesc::UINT8), gamma = profile;
    const std::array<std::uint8_t, 160> anyBytes{1, 2, 3};
    profile.spec.attribute("ICCProfile", TypeDesc(TypeDesc::UINT8, 160), anyBytes.data());
    write("profile.tif", profile);
    const OIIO::ImageSpec result = smoothed("profile.tif").spec;
    const auto* kept = result.find_attribute("ICCProfile");
    ASSERT_TRUE(kept != nullptr && kept->datasize() == sizeof anyBytes);
    EXPECT_EQ(std::memcmp(kept->data(), anyBytes.data(), sizeof anyBytes), 0);
    gamma.spec.attribute("oiio:ColorSpace", "GammaCorrected1.8");
    gamma.spec.attribute("oiio:Gamma", 1.8F);
    write("gamma.png", gamma);
    EXPECT_NEAR(smoothed("gamma.png").spec.get_float_attribute("oiio:Gamma"), 1.8, 0.001);
}

/// Lossy compression and bilevel files give way to what holds the result.
TEST_F(PictureTest, ResultsAreNotLostInTheFilesOwnEncoding) {
    TestPicture lossy = MakePicture(64, 48, 4, TypeDesc::HALF, Alpha::Associated);
    FillWithNoise(lossy, 7);
    lossy.spec.attribute("compression", "dwaa");
    write("lossy.exr", lossy);
    EXPECT_EQ(smoothed("lossy.exr", "--softness 0").samples, read("lossy.exr").samples);

    TestPicture bilevel = MakePicture(48, 40, 1, TypeDesc::UINT8);
    bilevel.spec.attribute("oiio:BitsPerSample", 1);
    DrawDisc(bilevel, {0}, {1});
    write("bilevel.tif", bilevel);
    const std::vector<std::byte> samples = smoothed("bilevel.tif").samples;
    EXPECT_TRUE(std::any_of(samples.begin(), samples.end(),
                            [](std::byte b) { return b != std::byte{0} && b != std::byte{255}; }));
}

TEST_F(PictureTest, UnlikeColorsAndUnnamedChannelsAreRefused) {
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

TEST_F(PictureTest, TgaKeepsItsMarkForAssociatedAlpha) {
    TestPicture picture = MakePicture(20, 10, 4, TypeDesc::UINT8);
    FillWithNoise(picture, 6);
    write("in.tga", picture);
    std::string bytes = FileText(path("in.tga"));
    std::uint32_t extensionArea = 0;
    std::memcpy(&extensionArea, &bytes[bytes.size() - 26], 4);
    bytes.at(extensionArea + 494) = 4;
    std::ofstream(path("in.tga"), std::ios::binary) << bytes;
    expectKept("in.tga");
}

/// What the module makes of straight pixels of red, green, blue and alpha on the unit scale, when
/// its images have these channels. `full` is full intensity.
template <typename Channel>
std::vector<double> RenderedAs(PF_PixelFormat format, double full, const OIIO::ImageSpec& spec,
                               const std::vector<double>& straight) {
    const host_kit::Module module("nevrel.so");
    host_kit::Host host;
    host_kit::Effect effect(host, module.entryPoint());
    effect.globalSetup();
    effect.paramsSetup();
    host_kit::Instance instance(effect);
    host_kit::World input(format, spec.width, spec.height), output(format, spec.width, spec.height);
    const auto place = [](std::size_t i) {
        return i / 4 * 4 + (i + 1) % 4;
    };  // alpha comes first in there
    for (std::size_t i = 0; i < straight.size(); ++i) {
        const double value = straight[i] * full;
        input.row<Channel>(0)[place(i)] =
            static_cast<Channel>(std::is_integral_v<Channel> ? std::round(value) : value);
    }
    EXPECT_TRUE(host_kit::SmartRender(instance, input, output).ok());
    std::vector<double> result(straight.size());
    for (std::size_t i = 0; i < straight.size(); ++i)
        result[i] = static_cast<double>(output.row<Channel>(0)[place(i)]) / full;
    return result;
}

/// The same at the depth of the picture's samples.
std::vector<double> Rendered(const OIIO::ImageSpec& spec, const std::vector<double>& straight) {
    if (spec.format == TypeDesc::UINT8)
        return RenderedAs<std::uint8_t>(PF_PixelFormat_ARGB32, 255, spec, straight);
    if (spec.format == TypeDesc::UINT16)
        return RenderedAs<std::uint16_t>(PF_PixelFormat_ARGB64, 32768, spec, straight);
    return RenderedAs<float>(PF_PixelFormat_ARGB128, 1, spec, straight);
}

std::vector<double> Pixels(const TestPicture& picture, bool straighten) {
    std::vector<double> pixels;
    for (int y = 0; y < picture.spec.height; ++y) {
        for (int x = 0; x < picture.spec.width; ++x) {
            const double alpha = Unit(picture, x, y, 3);
            const double divisor = straighten && alpha != 0 ? alpha : 1;
            for (int c = 0; c < 3; ++c) pixels.push_back(Unit(picture, x, y, c) / divisor);
            pixels.push_back(alpha);
        }
    }
    return pixels;
}

TEST_F(PictureTest, SmoothsAtThePicturesOwnDepthAndAlphaConvention) {
    for (const FileKind& kind : fileKinds) {
        if (kind.channels != 4) continue;
        const bool associated = kind.alpha == Alpha::Associated;
        TestPicture picture = MakePictureOf(kind, 48, 40);
        DrawDisc(picture, {0.25, 0.125, 0.0625, 0.5}, {0.5, 0.75, 0.25, 1.0});
        write(kind.name, picture);
        picture = read(kind.name);
        const TestPicture result = smoothed(kind.name);
        const std::vector<double> before = Pixels(picture, associated);
        std::vector<double> expected = Rendered(picture.spec, before);
        const std::vector<double> actual = Pixels(result, false);
        // Half a step of the file's samples, or what half floats keep.
        const double tolerance = kind.type == TypeDesc::UINT8    ? 0.51 / 255
                                 : kind.bits == 10               ? 0.51 / 1023 + 0.5 / 32768
                                 : kind.bits == 12               ? 0.51 / 4095 + 0.5 / 32768
                                 : kind.type == TypeDesc::UINT16 ? 0.51 / 32768
                                                                 : 0.0005;
        int changed = 0;
        for (std::size_t i = 0; i < expected.size(); i += 4) {
            for (std::size_t c = 0; c < 4; ++c) {
                const double factor = associated && c < 3 ? expected[i + 3] : 1;
                EXPECT_NEAR(actual[i + c], expected[i + c] * factor, tolerance)
                    << kind.name << " sample " << i + c;
            }
            changed += expected[i + 3] != before[i + 3] ? 1 : 0;
        }
        EXPECT_GT(changed, 100) << kind.name;
    }
}

TEST_F(PictureTest, DepthOptionChoosesTheKernelsAndKeepsTheFilesDepth) {
    TestPicture picture = MakePicture(48, 40, 3, TypeDesc::UINT8);
    DrawDisc(picture, {0.1, 0.2, 0.3}, {0.9, 0.8, 0.4});
    write("in.png", picture);
    std::vector<TestPicture> results;
    for (const char* depth : {"8", "16", "float"}) {
        results.push_back(smoothed("in.png", std::string("--depth ") + depth));
        EXPECT_EQ(results.back().spec.format, TypeDesc::UINT8);
        int different = 0;
        for (std::size_t i = 0; i < picture.samples.size(); ++i) {
            const int a = std::to_integer<int>(results.back().samples[i]);
            const int b = std::to_integer<int>(results.front().samples[i]);
            EXPECT_LE(std::abs(a - b), 2) << depth << " sample " << i;
            different += a != b ? 1 : 0;
        }
        EXPECT_EQ(different == 0, depth == std::string("8"));
    }
}

TEST_F(PictureTest, ColorKeyAddsAlphaAndKeepsTheColorBehindIt) {
    for (const FileKind& kind : fileKinds) {
        if (kind.channels != 1 && kind.channels != 3) continue;
        TestPicture picture = MakePictureOf(kind, 48, 40);
        DrawDisc(picture, {0, 0, 0}, {1, 1, 1});
        write(kind.name, picture);
        const std::string name = kind.name;
        const TestPicture inverted = smoothed(name, "--color-key '#ffffff' --invert");
        const TestPicture keyed = smoothed(name, "--color-key '#ffffff'");
        const bool greyBecomesColor = name == "y.tga";
        const int alpha = greyBecomesColor ? 3 : kind.channels;
        ASSERT_EQ(keyed.spec.nchannels, alpha + 1) << name;
        EXPECT_EQ(Unit(keyed, 0, 0, alpha), 0) << name;
        EXPECT_EQ(Unit(keyed, 24, 20, alpha), 1) << name;
        EXPECT_EQ(Unit(inverted, 0, 0, alpha), 1) << name;
        EXPECT_EQ(Unit(inverted, 24, 20, alpha), 0) << name;
        EXPECT_EQ(Unit(keyed, 0, 0, 0), kind.alpha == Alpha::Associated ? 0 : 1) << name;
        bool soft = false;
        for (int x = 0; x < 48; ++x)
            soft |= Unit(keyed, x, 7, alpha) > 0 && Unit(keyed, x, 7, alpha) < 1;
        EXPECT_TRUE(soft) << name;
    }
}

TEST_F(PictureTest, OtherChannelsAreCarriedOver) {
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
        std::memcpy(picture.sample(static_cast<int>(y), static_cast<int>(y), 4), &id, sizeof id);
    }
    write("in.exr", picture);
    const TestPicture input = read("in.exr");
    const auto changedChannels = [&](const std::string& options) {
        const TestPicture output = smoothed("in.exr", options);
        std::string changed;
        for (const std::string& name : input.spec.channelnames) {
            const int from = input.spec.channelindex(name), to = output.spec.channelindex(name);
            const std::size_t size = input.spec.channelformat(from).size();
            EXPECT_EQ(input.spec.channelformat(from), output.spec.channelformat(to)) << name;
            bool same = true;
            for (int i = 0; i < 48 * 40; ++i) {
                const auto at = [&](const TestPicture& p, int c) {
                    return p.samples.data() +
                           static_cast<std::size_t>(i) * p.spec.pixel_bytes(true) +
                           p.spec.pixel_bytes(0, c, true);
                };
                same = same && std::memcmp(at(input, from), at(output, to), size) == 0;
            }
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

TEST_F(PictureTest, WindowsAndTilesAreKept) {
    TestPicture window = MakePicture(48, 40, 4, TypeDesc::HALF, Alpha::Associated);
    window.spec.x = 10;
    window.spec.y = -5;
    window.spec.full_width = 100;
    window.spec.full_height = 80;
    FillWithNoise(window, 3);
    write("window.exr", window);
    TestPicture tiles = MakePicture(50, 41, 4, TypeDesc::UINT8);
    tiles.spec.tile_width = tiles.spec.tile_height = 16;
    FillWithNoise(tiles, 4);
    write("tiles.tif", tiles);
    for (const std::string name : {"window.exr", "tiles.tif"}) expectKept(name);
    ExpectError(run("smooth -o out.png window.exr"), 1, {"out.png", "data window"});
}

TEST_F(PictureTest, FilesKeepAllTheirPartsOrAreRefused) {
    for (const std::string name : {"parts.exr", "pages.tif"}) {
        const bool exr = name == "parts.exr";
        std::vector<TestPicture> parts(
            3, MakePicture(48, 40, 4, exr ? TypeDesc::HALF : TypeDesc::UINT8,
                           exr ? Alpha::Associated : Alpha::Straight));
        for (unsigned i = 0; i < 3; ++i) {
            FillWithNoise(parts[i], i);
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
    std::string bytes = FileText(path("pages.tif"));
    std::uint32_t directory = 0;
    std::uint16_t entries = 0;
    std::memcpy(&directory, &bytes[4], sizeof directory);
    std::memcpy(&entries, &bytes[directory], sizeof entries);
    bytes[directory + 2 + entries * 12U + 3] = 1;
    std::ofstream(path("damaged.tif"), std::ios::binary) << bytes;
    ExpectError(smooth("damaged.tif"), 1, {"damaged.tif", "page 2"});
}

TEST_F(PictureTest, AnotherFormatGetsItsOwnAlphaConvention) {
    TestPicture straight = MakePicture(48, 40, 4, TypeDesc::UINT8);
    DrawDisc(straight, {1, 0.5, 0, 0.4}, {0, 0.5, 1, 0.8});
    write("in.png", straight);
    ASSERT_EQ(run("smooth --softness 0 -o out.exr in.png").status, 0);
    ExpectError(run("smooth --softness 0 -o back.png out.exr"), 0, {"back.png", "linear"});
    EXPECT_EQ(FileText(path("back.png")).find("gAMA"), std::string::npos);
    const TestPicture associated = read("out.exr");
    const TestPicture back = read("back.png");
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 48; ++x) {
            const double alpha = Unit(straight, x, y, 3);
            EXPECT_NEAR(Unit(associated, x, y, 3), alpha, 0.0003);
            for (int c = 0; c < 3; ++c) {
                EXPECT_NEAR(Unit(associated, x, y, c), Unit(straight, x, y, c) * alpha, 0.0003);
                EXPECT_NEAR(Unit(back, x, y, c), Unit(straight, x, y, c), 0.001);
            }
        }
    }
}

/// The time of writing would make other bytes of the same picture each time.
TEST_F(PictureTest, FilesOfPicturesWithoutADateHaveNone) {
    TestPicture picture = MakePicture(8, 8, 3, TypeDesc::UINT8);
    write("in.png", picture);
    for (const std::string name : {"out.exr", "out.tif", "out.tga", "out.dpx"}) {
        ASSERT_EQ(run("smooth -o " + name + " in.png").status, 0) << name;
        const std::string date = read(name).spec.get_string_attribute("DateTime");
        EXPECT_EQ(date.find_first_of("0123456789"), std::string::npos) << name << ": " << date;
    }
}

TEST_F(PictureTest, FiniteFloatPicturesStayFiniteAndOthersKeepTheirFaultsWhereTheyAre) {
    TestPicture picture = MakePicture(48, 40, 4, TypeDesc::FLOAT, Alpha::Associated);
    DrawDisc(picture, {1e30, 1, 1, 1e-30}, {0.5, 0.5, 0.5, 1});
    write("tiny_alpha.exr", picture);
    for (const double value : Pixels(smoothed("tiny_alpha.exr"), false))
        ASSERT_TRUE(std::isfinite(value));

    DrawDisc(picture, {0.9, 0.1, 0.4, 0.5}, {0.5, 0.5, 0.5, 1});
    write("clean.exr", picture);
    SetUnit(picture, 5, 5, 0, std::nan(""));
    SetUnit(picture, 40, 30, 1, INFINITY);
    write("faults.exr", picture);
    expectKept("faults.exr");
    const TestPicture faults = smoothed("faults.exr"), clean = smoothed("clean.exr");
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 48; ++x) {
            const bool near = std::hypot(x - 5, y - 5) < 3 || std::hypot(x - 40, y - 30) < 3;
            for (int c = 0; c < 4 && !near; ++c)
                EXPECT_EQ(Unit(faults, x, y, c), Unit(clean, x, y, c)) << x << ", " << y;
        }
    }
}

/// Standard streams and raw frames give what files do.
TEST_F(PictureTest, PipesGiveTheSameAsFiles) {
    const struct {
        TypeDesc type;
        const char *file, *form;
    } kinds[] = {{TypeDesc::UINT8, "a.png", "rgba"},
                 {TypeDesc::UINT16, "b.png", "rgba64le"},
                 {TypeDesc::FLOAT, "c.tif", "rgbaf32le"}};
    for (const auto& [type, file, form] : kinds) {
        TestPicture picture = MakePicture(61, 37, 4, type);
        FillWithNoise(picture, 5);
        write(file, picture);
        const TestPicture expected = smoothed(file, "--color-key '#102030' --key-threshold 90");
        const std::string options = " --color-key '#102030' --key-threshold 90";
        ASSERT_EQ(run("smooth - -o - <" + std::string(file) + options).output,
                  FileText(path("out_" + std::string(file))));
        const std::string_view frame(reinterpret_cast<const char*>(picture.samples.data()),
                                     picture.samples.size());
        std::ofstream(path("raw"), std::ios::binary) << frame << frame << frame.substr(1);
        const CommandRun raw = run("smooth --raw 61x37:" + std::string(form) + " <raw" + options);
        ExpectError(raw, 1, {"frame 3", "ends within it"});
        const std::string_view smooth(reinterpret_cast<const char*>(expected.samples.data()),
                                      expected.samples.size());
        EXPECT_TRUE(raw.output == std::string(smooth) + std::string(smooth)) << file;
    }
    ExpectError(run("smooth - -o - </dev/null"), 1, {"-: is no picture"});
    ASSERT_EQ(run("smooth - -o - --format tif <a.png").status, 0);
    EXPECT_EQ(FileText(path("logs/output")).substr(0, 2), "II");
}

/// White lets all of the effect through, black nothing, grey a part.
TEST_F(PictureTest, MasksHoldTheEffectBack) {
    for (const char* file : {"a.png", "a.exr"}) {
        const bool exr = std::string(file).ends_with("exr");
        TestPicture picture = MakePicture(60, 40, 4, exr ? TypeDesc::HALF : TypeDesc::UINT8,
                                          exr ? Alpha::Associated : Alpha::Straight);
        FillWithNoise(picture, 3);
        write(file, picture);
        TestPicture mask = MakePicture(60, 40, 1, TypeDesc::UINT8);
        for (std::size_t i = 0; i < mask.samples.size(); ++i)
            mask.samples[i] = std::byte(i % 60 < 20 ? 0 : i % 60 < 40 ? 255 : 128);
        write("mask.png", mask);
        const TestPicture all = smoothed(file), some = smoothed(file, "--mask mask.png");
        const std::size_t pixel = picture.samples.size() / (60 * 40);
        std::size_t between = 0;
        for (std::size_t i = 0; i < picture.samples.size(); ++i) {
            const std::size_t x = i / pixel % 60;
            const auto was = picture.samples[i], is = some.samples[i], full = all.samples[i];
            if (x < 40) {
                ASSERT_EQ(is, x < 20 ? was : full) << file << i;
            }
            if (x >= 40 && is != was && is != full) ++between;
        }
        EXPECT_GT(between, 300U) << file;
    }
    write("small.png", MakePicture(8, 8, 1, TypeDesc::UINT8));
    ExpectError(run("smooth a.png -o out.png --mask small.png"), 1, {"small.png", "8 x 8", "60 x"});
}

/// A look found here is the default where the file lies beside the module.
TEST_F(PictureTest, SettingsGoThroughFiles) {
    write("a.png", MakePicture(8, 8, 4, TypeDesc::UINT8));
    const std::string look =
        "--softness 33 --bias 4 --color-threshold 5 --color-key '#010203' --key-threshold 6 "
        "--invert";
    ASSERT_EQ(run("smooth a.png -o b.png --save-settings s.ini " + look).status, 0);
    EXPECT_EQ(FileText(path("s.ini")),
              "[defaults]\nColorThreshold=5\nSoftness=33\nBias=4\nColorkeyEnable=1\n"
              "KeycolorR=1\nKeycolorG=2\nKeycolorB=3\nColorkeyThreshold=6\nColorkeyInvert=1\n");
    const CommandRun read =
        run("smooth a.png -o b.png --dry-run --settings s.ini --softness 7 --no-color-key");
    EXPECT_NE(read.output.find("Softness=7\nBias=4\nColorkeyEnable=0\nKeycolorR=1\n"),
              std::string::npos)
        << read.output;
    std::ofstream(path("bad.ini")) << "[ui]\nColorkeyGroup=9\n[defaults]\nbias=101\n";
    ExpectError(run("smooth a.png -o b.png --settings bad.ini"), 2,
                {"bad.ini:4: Bias is '101'", "0 to 100"});
}

}  // namespace
