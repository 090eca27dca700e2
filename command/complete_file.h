// Finding out that a file is damaged where the reading library would not tell.
#pragma once

#include <cstddef>
#include <filesystem>

namespace nevrel {

/// False when the file is shorter than its own structure says. Knows PNG (the chunks up to the end
/// mark) and DPX (the size of the stored image) by their first bytes; true for others, whose
/// readers miss every byte themselves.
[[nodiscard]] bool IsComplete(const std::filesystem::path& path);

/// How many pages a TIFF says that it has. One whose description is damaged counts, but none behind
/// it.
[[nodiscard]] std::size_t CountTiffPages(const std::filesystem::path& path);

}  // namespace nevrel
