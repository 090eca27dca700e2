// What lies in a folder.
#pragma once

#include <filesystem>
#include <functional>

namespace nevrel {

/// Calls `action` for each entry of the folder, in no order. Throws PictureError, or PassingError
/// where the folder's share is away.
void ForEachEntry(const std::filesystem::path& folder,
                  const std::function<void(const std::filesystem::directory_entry&)>& action);

}  // namespace nevrel
