// File names with a place for the frame number.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/sequences/frame_numbers.h"

namespace nevrel {

/// A path whose file name holds the place of a frame number: `shot.####.png` (as many digits as
/// hashes, four for a single one), `shot.@@.png` (as many as signs), either in brackets, or
/// `shot.%04d.png`. Beside one of the others `@` is an ordinary sign, as in `icon@2x.####.png`.
/// Numbers with more digits are taken as they are; `%%` is a percent sign.
class NamePattern {
  public:
    /// Nothing when the name has no such place. Throws UsageError when it has several.
    [[nodiscard]] static std::optional<NamePattern> parse(const std::filesystem::path& path);

    /// The pattern as it was given.
    [[nodiscard]] const std::filesystem::path& text() const { return path_; }
    /// The path of a frame.
    [[nodiscard]] std::filesystem::path at(FrameNumber frame) const;
    /// The frame that a file name stands for; nothing for any other name.
    [[nodiscard]] std::optional<FrameNumber> frameOf(std::string_view name) const;
    /// The frames that lie in the folder, ascending; none when there is no such folder. Throws
    /// PictureError when it cannot be read.
    [[nodiscard]] std::vector<FrameNumber> find() const;
    /// The same names in `folder`, and with another extension if `format` names one.
    [[nodiscard]] NamePattern movedTo(const std::filesystem::path& folder,
                                      const std::string& format) const;

  private:
    [[nodiscard]] std::string name(FrameNumber frame) const;

    std::filesystem::path path_;
    std::string before_, after_;  ///< the number in the file name
    int digits_ = 0;              ///< at least
};

/// `name` with its doubled percent signs made single ones.
[[nodiscard]] std::string WithoutEscapes(std::string_view name);

/// Whether numbers within names count as numbers: cel2 comes before cel10.
[[nodiscard]] bool NaturallyLess(std::string_view a, std::string_view b);

}  // namespace nevrel
