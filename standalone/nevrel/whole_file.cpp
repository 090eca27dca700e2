#include "standalone/nevrel/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>

#include "standalone/nevrel/picture_error.h"

namespace nevrel {
namespace {

constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<int> filesInPlacement{0};
std::atomic<int> pendingSignal{0};

void EndBySignal(int number) {
    signal(number, SIG_DFL);
    raise(number);
}

void OnSignal(int number) {
    pendingSignal = number;
    if (filesInPlacement == 0) EndBySignal(number);
}

/// While one lives, the signals that end the program wait.
class Placement {
  public:
    Placement() { ++filesInPlacement; }
    ~Placement() {
        if (--filesInPlacement == 0 && pendingSignal != 0) EndBySignal(pendingSignal);
    }
    Placement(const Placement&) = delete;
    Placement& operator=(const Placement&) = delete;
};

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (isOpen()) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_;
};

/// One file on its way to its place.
class NewFile {
  public:
    explicit NewFile(const std::filesystem::path& path) : path_(path), target_(path) {
        std::error_code error;
        if (std::filesystem::is_symlink(path, error))
            target_ = std::filesystem::weakly_canonical(path, error);
        struct stat present {};
        if (stat(target_.c_str(), &present) == 0) {
            if (!S_ISREG(present.st_mode)) throw PictureError(path_, "is not a regular file");
            mode_ = present.st_mode & 0777U;
        }
        const std::string serial = std::to_string(getpid()) + "-" + std::to_string(++serial_);
        const std::string name = std::string(1, '.') + target_.filename().string() + "." + serial + ".part";
        temporary_ = target_;
        temporary_.replace_filename(name);
    }

    void write(std::span<const std::byte> bytes) {
        const std::filesystem::path folder = target_.has_parent_path() ? target_.parent_path() : ".";
        const Descriptor unnamed(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode_));
        if (unnamed.isOpen()) {
            fill(unnamed, bytes);
            const Placement placement;
            const std::string link = std::string("/proc/self/fd/") + std::to_string(unnamed.number());
            require(linkat(AT_FDCWD, link.c_str(), AT_FDCWD, temporary_.c_str(), AT_SYMLINK_FOLLOW) == 0);
            moveIntoPlace();
        } else {
            writeNamed(bytes);
        }
    }

  private:
    /// For file systems without unnamed files.
    void writeNamed(std::span<const std::byte> bytes) try {
        const Placement placement;
        const Descriptor named(open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode_));
        require(named.isOpen());
        try {
            fill(named, bytes);
        } catch (...) {
            unlink(temporary_.c_str());
            throw;
        }
        moveIntoPlace();
    } catch (const std::bad_alloc&) {
        throw PictureError(path_, "not enough memory");
    }

    void fill(const Descriptor& file, std::span<const std::byte> bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file.number(), bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            require(written > 0);
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        require(fsync(file.number()) == 0);
    }

    void moveIntoPlace() const {
        if (rename(temporary_.c_str(), target_.c_str()) == 0) return;
        const int error = errno;
        unlink(temporary_.c_str());
        errno = error;
        require(false);
    }

    void require(bool success) const {
        if (!success) throw PictureError(path_, std::string("cannot be written: ") + std::strerror(errno));
    }

    static inline std::atomic<int> serial_{0};
    std::filesystem::path path_;
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    mode_t mode_ = 0666;
};

}  // namespace

void WriteWholeFile(const std::filesystem::path& path, std::span<const std::byte> bytes) {
    NewFile(path).write(bytes);
}

void PrepareSignals() {
    for (const int number : kEndingSignals) signal(number, OnSignal);
    signal(SIGXFSZ, SIG_IGN);
}

}  // namespace nevrel
