// A file that exists in memory only, for writers that want a path.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "command/files/descriptor.h"

namespace nevrel {

/// Cannot run full like a disk, and leaves nothing behind. Throws std::system_error where the
/// system refuses.
class MemoryFile {
  public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// A path under which this process can open the file for reading and writing.
    [[nodiscard]] std::string path() const { return descriptor_.path(); }
    /// What the file holds now; valid until the next call, and only while nothing writes to it.
    [[nodiscard]] std::span<const std::byte> bytes();
    /// Overwrites what the file holds from `offset` on.
    void set(std::size_t offset, std::span<const std::byte> bytes) const;
    void resize(std::size_t size) const;

  private:
    void unmap();

    Descriptor descriptor_;
    void* mapping_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace nevrel
