#include "command/files/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <optional>
#include <string>

#include "command/errors.h"
#include "command/files/descriptor.h"
#include "command/files/ending_signals.h"

namespace nevrel {
namespace {

/// One file on its way to its place.
class NewFile {
  public:
    explicit NewFile(const std::filesystem::path& path) : path_(path), target_(FollowLinks(path)) {
        struct stat present {};
        if (stat(target_.c_str(), &present) == 0) {
            if (!S_ISREG(present.st_mode)) throw PictureError(path_, "is not a regular file");
            permissions_ = present.st_mode & 0777U;
        } else {
            require(errno == ENOENT);
        }
        constexpr std::size_t longestName = 200;  // leaves room for the rest
        const std::string serial = std::to_string(getpid()) + "-" + std::to_string(++serial_);
        const std::string name = target_.filename().string().substr(0, longestName);
        temporary_ = target_;
        temporary_.replace_filename(std::string(1, '.').append(name) + "." + serial + ".part");
    }

    void write(std::span<const std::byte> bytes) {
        const std::filesystem::path folder =
            target_.has_parent_path() ? target_.parent_path() : ".";
        const Descriptor unnamed(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, newFile));
        if (unnamed.isOpen()) {
            fill(unnamed, bytes);
            const EndingSignalsWait wait;
            if (link(unnamed, target_)) return;
            require(errno == EEXIST && link(unnamed, temporary_));
            moveIntoPlace();
        } else {
            writeNamed(bytes);
        }
    }

  private:
    /// For file systems without unnamed files.
    void writeNamed(std::span<const std::byte> bytes) {
        const EndingSignalsWait wait;
        const Descriptor named(
            open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFile));
        require(named.isOpen());
        try {
            fill(named, bytes);
        } catch (...) {
            unlink(temporary_.c_str());
            throw;
        }
        moveIntoPlace();
    }

    void fill(const Descriptor& file, std::span<const std::byte> bytes) const {
        WriteAll(file.number(), bytes, path_);
        if (permissions_) require(fchmod(file.number(), *permissions_) == 0);
        require(fsync(file.number()) == 0);
    }

    [[nodiscard]] static bool link(const Descriptor& unnamed, const std::filesystem::path& name) {
        return linkat(AT_FDCWD, unnamed.path().c_str(), AT_FDCWD, name.c_str(),
                      AT_SYMLINK_FOLLOW) == 0;
    }

    void moveIntoPlace() const {
        if (rename(temporary_.c_str(), target_.c_str()) == 0) return;
        const int error = errno;
        unlink(temporary_.c_str());
        errno = error;
        require(false);
    }

    void require(bool success) const {
        if (!success) ThrowSystemError(path_, "cannot be written");
    }

    static constexpr mode_t newFile = 0666;
    static inline std::atomic<int> serial_{0};
    std::filesystem::path path_;
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::optional<mode_t> permissions_;  ///< of the file that is replaced
};

}  // namespace

void WriteAll(int file, std::span<const std::byte> bytes, const std::filesystem::path& path) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) ThrowSystemError(path, "cannot be written");
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

void ReplaceFile(const std::filesystem::path& path, std::span<const std::byte> bytes) {
    NewFile(path).write(bytes);
}

std::filesystem::path FollowLinks(std::filesystem::path path) {
    constexpr int mostLinks = 40;
    std::filesystem::path place = path;
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(place, error); ++links) {
        if (links == mostLinks) return path;
        place = place.parent_path() / std::filesystem::read_symlink(place);
    }
    return place;
}

}  // namespace nevrel
