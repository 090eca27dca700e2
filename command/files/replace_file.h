// Files that appear whole or not at all.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace nevrel {

/// Writes `bytes` to `path`, replacing what is there in one step and keeping its permissions. Until
/// then the new file has no name where the file system allows it, so that nothing is left behind
/// whenever the program ends. Symbolic links are followed. Throws PictureError; what was there
/// before then stays.
void ReplaceFile(const std::filesystem::path& path, std::span<const std::byte> bytes);

/// Writes all of `bytes` to an open file, which errors call `path`. Throws PictureError.
void WriteAll(int file, std::span<const std::byte> bytes, const std::filesystem::path& path);

/// Where a file written to `path` comes to lie: what a symbolic link stands for, whether it exists
/// or not. A link that leads back to itself is returned as it is.
[[nodiscard]] std::filesystem::path FollowLinks(std::filesystem::path path);

}  // namespace nevrel
