// An open file of the system.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <string>

namespace nevrel {

/// Owns what open() gave; negative when it failed.
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
    /// A path under which this process can reach the file even when it has no name.
    [[nodiscard]] std::string path() const {
        return std::string("/proc/self/fd/") + std::to_string(number_);
    }

  private:
    int number_;
};

}  // namespace nevrel
