// Files that appear whole or not at all.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace nevrel {

/// Writes `bytes` to `path`, replacing what is there in one step. Until then the new file has no name where
/// the file system allows it, so that nothing is left behind whenever the program ends. A symbolic link is
/// followed. Throws PictureError; what was there before then stays.
void WriteWholeFile(const std::filesystem::path& path, std::span<const std::byte> bytes);

/// Lets SIGINT, SIGTERM and SIGHUP end the program only when no file is just being put in place, and makes a
/// file size limit an error of the write that passes it. Call once, early.
void PrepareSignals();

}  // namespace nevrel
