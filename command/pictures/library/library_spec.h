// Between the picture library's descriptions and our own.
#pragma once

#include <OpenImageIO/imageio.h>

#include "command/pictures/picture.h"

namespace nevrel {

/// The attribute by which the library tells straight alpha.
inline constexpr char straightAttribute[] = "oiio:UnassociatedAlpha";

[[nodiscard]] PartSpec FromLibrary(const OIIO::ImageSpec& spec);

/// What the library would tell of a file with the part, with all that it told of the one that the
/// part comes from.
[[nodiscard]] OIIO::ImageSpec ToLibrary(const PartSpec& part);

/// The description that the library gave; an empty one for parts that it did not read.
[[nodiscard]] const OIIO::ImageSpec& LibraryDetails(const PartSpec& part);

}  // namespace nevrel
