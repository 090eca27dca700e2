// The picture that holds the effect back.
#pragma once

#include <filesystem>
#include <vector>

#include "host_kit/world.h"

namespace nevrel {

/// How far the effect acts, pixel by pixel. Several threads may use one at once.
class Mask {
  public:
    /// Reads it; an empty path is a mask that lets everything through. Throws PictureError.
    explicit Mask(const std::filesystem::path& path);

    /// Takes back what the effect changed where the mask is black, and in part where it is grey.
    /// Throws PictureError when the mask is of another size than the pictures.
    void holdBack(const host_kit::World& before, host_kit::World& after) const;

  private:
    std::filesystem::path path_;
    int width_ = 0, height_ = 0;
    std::vector<double> weights_;  ///< 0 black, 1 white
};

}  // namespace nevrel
