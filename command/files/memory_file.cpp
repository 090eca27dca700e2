#include "command/files/memory_file.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace nevrel {
namespace {

void Require(bool success) {
    if (!success) throw std::system_error(errno, std::generic_category(), "a file in memory");
}

}  // namespace

MemoryFile::MemoryFile() : descriptor_(memfd_create("picture", MFD_CLOEXEC)) {
    Require(descriptor_.isOpen());
}

MemoryFile::~MemoryFile() { unmap(); }

std::span<const std::byte> MemoryFile::bytes() {
    unmap();
    struct stat status {};
    Require(fstat(descriptor_.number(), &status) == 0);
    if (status.st_size == 0) return {};
    const auto size = static_cast<std::size_t>(status.st_size);
    void* mapping = mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor_.number(), 0);
    Require(mapping != MAP_FAILED);
    mapping_ = mapping;
    size_ = size;
    return {static_cast<const std::byte*>(mapping_), size_};
}

void MemoryFile::set(std::size_t offset, std::span<const std::byte> bytes) const {
    while (!bytes.empty()) {  // a call writes 2 GB at most, and less before a limit to file size
        const ssize_t written =
            pwrite(descriptor_.number(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        Require(written > 0);
        offset += static_cast<std::size_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

void MemoryFile::resize(std::size_t size) const {
    Require(ftruncate(descriptor_.number(), static_cast<off_t>(size)) == 0);
}

void MemoryFile::unmap() {
    if (mapping_ != nullptr) munmap(mapping_, size_);
    mapping_ = nullptr;
}

}  // namespace nevrel
