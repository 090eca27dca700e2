#include "tests/command/picture_files.h"

#include <cmath>
#include <random>
#include <stdexcept>

namespace {

constexpr char straight[] = "oiio:UnassociatedAlpha";

void Require(bool success, const std::string& path, const std::string& reason) {
    if (!success) throw std::runtime_error(path + ": " + reason);
}

}  // namespace

TestPicture MakePicture(int width, int height, int channels, const OIIO::TypeDesc& type,
                        Alpha alpha) {
    TestPicture picture{OIIO::ImageSpec(width, height, channels, type), {}};
    if (channels == 1) picture.spec.channelnames = {"Y"};
    if (channels == 2) {
        picture.spec.channelnames = {"Y", "A"};
        picture.spec.alpha_channel = 1;
    }
    if (alpha == Alpha::Straight && picture.spec.alpha_channel >= 0)
        picture.spec.attribute(straight, 1);
    picture.samples.resize(static_cast<std::size_t>(picture.spec.image_bytes(true)));
    return picture;
}

TestPicture MakePictureFor(const std::string& name, int width, int height, int channels) {
    return name.ends_with("exr")
               ? MakePicture(width, height, channels, OIIO::TypeDesc::HALF, Alpha::Associated)
               : MakePicture(width, height, channels, OIIO::TypeDesc::UINT8);
}

void SetUnit(TestPicture& picture, int x, int y, int channel, double value) {
    OIIO::convert_pixel_values(OIIO::TypeDesc::DOUBLE, &value, picture.spec.channelformat(channel),
                               picture.samples.data() + picture.offset(x, y, channel), 1);
}

double Unit(const TestPicture& picture, int x, int y, int channel) {
    double value = 0;
    OIIO::convert_pixel_values(picture.spec.channelformat(channel),
                               picture.samples.data() + picture.offset(x, y, channel),
                               OIIO::TypeDesc::DOUBLE, &value, 1);
    return value;
}

void FillWithNoise(TestPicture& picture, unsigned seed) {
    std::mt19937 generator(seed);
    const auto next = [&] { return static_cast<double>(generator() % 1024) / 1023; };
    ForEachSample(picture, [&](int x, int y, int c) {
        // Colour behind an alpha of 0 has to survive too.
        const bool clear = c == picture.spec.alpha_channel && x % 3 == 0;
        SetUnit(picture, x, y, c, clear ? 0 : next());
    });
}

void DrawDisc(TestPicture& picture, const std::vector<double>& inside,
              const std::vector<double>& outside) {
    const int width = picture.spec.width, height = picture.spec.height;
    ForEachSample(picture, [&](int x, int y, int c) {
        const bool within = std::hypot(x - width / 2, y - height / 2) < height * 0.4;
        SetUnit(picture, x, y, c, (within ? inside : outside).at(static_cast<std::size_t>(c)));
    });
}

TestPicture MakeNoise(const std::string& name, int width, int height, int channels, unsigned seed) {
    TestPicture picture = MakePictureFor(name, width, height, channels);
    FillWithNoise(picture, seed);
    return picture;
}

void WriteNoise(const std::string& path, int width, int height, int channels, unsigned seed) {
    WriteTestPictures(path, {MakeNoise(path, width, height, channels, seed)});
}

void WriteTestPictures(const std::string& path, const std::vector<TestPicture>& parts) {
    const auto output = OIIO::ImageOutput::create(path);
    Require(output != nullptr, path, OIIO::geterror());
    std::vector<OIIO::ImageSpec> specs;
    for (const TestPicture& part : parts) specs.push_back(part.spec);
    const bool announced = parts.size() > 1 && !output->supports("appendsubimage");
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool opened = i > 0 ? output->open(path, specs[i], OIIO::ImageOutput::AppendSubimage)
                            : announced
                                ? output->open(path, static_cast<int>(specs.size()), specs.data())
                                : output->open(path, specs[0]);
        const bool mixed = !specs[i].channelformats.empty();
        const OIIO::TypeDesc type = mixed ? OIIO::TypeDesc::UNKNOWN : specs[i].format;
        Require(opened && output->write_image(type, parts[i].samples.data()), path,
                output->geterror());
    }
    Require(output->close(), path, output->geterror());
}

TestPicture ReadTestPicture(const std::string& path, int part) {
    OIIO::ImageSpec hints;
    hints.attribute(straight, 1);
    const auto input = OIIO::ImageInput::open(path, &hints);
    Require(input != nullptr && input->seek_subimage(part, 0), path, OIIO::geterror());
    TestPicture picture{input->spec(), {}};
    picture.samples.resize(static_cast<std::size_t>(picture.spec.image_bytes(true)));
    const int channels = picture.spec.nchannels;
    Require(
        input->read_image(part, 0, 0, channels, OIIO::TypeDesc::UNKNOWN, picture.samples.data()),
        path, input->geterror());
    return picture;
}
