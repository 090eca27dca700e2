// Pictures for people to look at: opaque, 8 bits a channel, as a screen shows them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "command/pictures/picture.h"
#include "host_kit/world.h"

namespace nevrel {

struct Color {
    std::uint8_t red, green, blue;

    friend bool operator==(const Color&, const Color&) = default;
};

/// A rectangle of pixels.
struct Area {
    int x, y, width, height;

    friend bool operator==(const Area&, const Area&) = default;
};

/// Pixels are drawn where the canvas has them and left out elsewhere.
class Canvas {
  public:
    /// Throws std::bad_alloc.
    Canvas(int width, int height, Color fill = {});

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] Color at(int x, int y) const { return pixels_[index(x, y)]; }
    void set(int x, int y, Color color) { pixels_[index(x, y)] = color; }

    void fill(const Area& area, Color color);
    /// A line one pixel wide around the area.
    void outline(const Area& area, Color color);
    /// Draws a part of another canvas at (x, y), each of its pixels as a square of `scale`.
    void draw(const Canvas& from, const Area& part, int x, int y, int scale = 1);

    /// As a picture to be written.
    [[nodiscard]] Picture picture() const;

  private:
    [[nodiscard]] std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_, height_;
    std::vector<Color> pixels_;
};

/// The part's colours over a checkerboard where they are transparent. Values of linear light, as
/// `part` says, are shown as sRGB.
[[nodiscard]] Canvas Show(const host_kit::World& pixels, const Part& part);

/// Writes a picture to look at, in the format of the path's extension. Throws PictureError.
void WriteView(const Canvas& canvas, const std::filesystem::path& path);

}  // namespace nevrel
