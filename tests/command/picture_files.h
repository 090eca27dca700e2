// Picture files for the tests of the command, written and read sample for sample.
#pragma once

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <string>
#include <vector>

/// A picture as a file holds it: samples are as stored, never multiplied or divided by alpha.
struct TestPicture {
    OIIO::ImageSpec spec;
    std::vector<std::byte> samples;

    /// Where a sample stands among the bytes.
    [[nodiscard]] std::size_t offset(int x, int y, int channel) const {
        const auto pixel = static_cast<std::size_t>(y) * static_cast<std::size_t>(spec.width) +
                           static_cast<std::size_t>(x);
        return pixel * spec.pixel_bytes(true) + spec.pixel_bytes(0, channel, true);
    }
};

enum class Alpha { Straight, Associated };

/// Cleared samples; channels are Y, YA, RGB, RGBA or as named.
TestPicture MakePicture(int width, int height, int channels, const OIIO::TypeDesc& type,
                        Alpha alpha = Alpha::Straight);

/// With the samples that a file of this name usually holds: half floats and associated alpha in
/// EXR, bytes and straight alpha elsewhere.
TestPicture MakePictureFor(const std::string& name, int width, int height, int channels = 4);

/// Fills the picture with sample bits of a generator; finite values in float samples.
void FillWithNoise(TestPicture& picture, unsigned seed);

/// A filled circle of `inside` on `outside`, which gives stair steps at every slope; values are on
/// the unit scale.
void DrawDisc(TestPicture& picture, const std::vector<double>& inside,
              const std::vector<double>& outside);

/// A sample on the unit scale.
void SetUnit(TestPicture& picture, int x, int y, int channel, double value);
double Unit(const TestPicture& picture, int x, int y, int channel);

/// Calls visit(x, y, channel).
template <typename Visit>
void ForEachSample(const TestPicture& picture, Visit&& visit) {
    for (int y = 0; y < picture.spec.height; ++y)
        for (int x = 0; x < picture.spec.width; ++x)
            for (int c = 0; c < picture.spec.nchannels; ++c) visit(x, y, c);
}

/// Such a picture as files of this name usually hold, full of noise.
TestPicture MakeNoise(const std::string& name, int width, int height, int channels = 4,
                      unsigned seed = 9);
void WriteNoise(const std::string& path, int width, int height, int channels = 4,
                unsigned seed = 9);
/// A file of one picture, or of several parts or pages.
void WriteTestPictures(const std::string& path, const std::vector<TestPicture>& parts);
TestPicture ReadTestPicture(const std::string& path, int part = 0);
