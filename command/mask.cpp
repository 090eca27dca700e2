#include "command/mask.h"

#include <string>

#include "command/errors.h"
#include "command/pictures/color_channels.h"
#include "command/pictures/picture_pixels.h"

namespace nevrel {

Mask::Mask(const std::filesystem::path& path) : path_(path) {
    if (path.empty()) return;
    const Picture picture = ReadPicture(path);
    const ColorChannels channels = FindColorChannels(picture, "", path);
    const Part& part = picture.parts[channels.part];
    width_ = part.spec.width;
    height_ = part.spec.height;
    weights_ = MaskWeights(part, channels);
}

void Mask::holdBack(const host_kit::World& before, host_kit::World& after) const {
    if (path_.empty()) return;
    if (width_ != before.width() || height_ != before.height()) {
        const auto size = [](auto width, auto height) {
            return std::to_string(width) + " x " + std::to_string(height);
        };
        throw PictureError(path_, "is a mask of " + size(width_, height_) +
                                      " pixels for a picture of " +
                                      size(before.width(), before.height()));
    }
    ApplyMask(weights_, before, after);
}

}  // namespace nevrel
