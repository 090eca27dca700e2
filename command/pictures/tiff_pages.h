// Finding out that a TIFF is damaged where the reading library would not tell.
#pragma once

#include <cstddef>
#include <filesystem>

namespace nevrel {

/// How many pages a TIFF says that it has. One whose description is damaged counts, but none behind
/// it.
[[nodiscard]] std::size_t CountTiffPages(const std::filesystem::path& path);

}  // namespace nevrel
