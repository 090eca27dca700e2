#include "command/files/folder.h"

#include "command/errors.h"

namespace nevrel {

void ForEachEntry(const std::filesystem::path& folder,
                  const std::function<void(const std::filesystem::directory_entry&)>& action) try {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) action(entry);
} catch (const std::filesystem::filesystem_error& error) {
    ThrowSystemError(folder, "cannot be read", error.code().value());
}

}  // namespace nevrel
