// Draws the sample picture: draw_samples FILE, in any format that the file name's extension stands
// for.
#include <OpenImageIO/imageio.h>

#include <cstdio>
#include <vector>

#include "samples/scene.h"

namespace {

/// Writes the frame without its alpha, which is opaque everywhere; false when the file cannot be
/// written.
bool Write(const Image8& frame, const char* path) {
    std::vector<unsigned char> bytes;
    for (const PF_Pixel p : frame.pixels) bytes.insert(bytes.end(), {p.red, p.green, p.blue});

    const auto output = OIIO::ImageOutput::create(path);
    if (!output) return false;
    OIIO::ImageSpec spec(frame.width, frame.height, 3, OIIO::TypeDesc::UINT8);
    spec.attribute("oiio:ColorSpace", "sRGB");
    spec.attribute("png:compressionLevel", 9);
    return output->open(path, spec) && output->write_image(OIIO::TypeDesc::UINT8, bytes.data()) &&
           output->close();
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: draw_samples FILE\n", stderr);
        return 2;
    }
    if (Write(SamplePicture(), arguments[1])) return 0;
    std::fprintf(stderr, "draw_samples: cannot write %s: %s\n", arguments[1],
                 OIIO::geterror().c_str());
    return 1;
}
