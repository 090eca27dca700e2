// What the fuzz targets share: the entry that a driver calls, values read from its bytes, and the
// end of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>

/// Runs one input. Called again and again in one process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process, so that the driver keeps the input, unless `right`.
inline void Require(bool right, const std::string& what) {
    if (right) return;
    std::fprintf(stderr, "fuzz target: %s\n", what.c_str());
    std::abort();
}

/// Values from the front of an input; zeros once it is used up.
class ByteSource {
  public:
    ByteSource(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    std::uint8_t byte() { return raw<std::uint8_t>(); }
    bool flag() { return (byte() & 1) != 0; }
    /// 0 to n - 1, n at most 256.
    int below(int n) { return byte() % n; }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(static_cast<int>(choices.size()))];
    }

    /// The bytes of a T as they stand.
    template <typename T>
    T raw() {
        T value{};
        const std::size_t count = size_ < sizeof value ? size_ : sizeof value;
        std::memcpy(&value, data_, count);
        skip(count);
        return value;
    }

    /// 0 to 250 from one byte; the five bytes above announce any value of the type.
    template <typename T = std::int32_t>
    T mostlySmall() {
        const int small = byte();
        return small <= largestSmall ? static_cast<T>(small) : raw<T>();
    }
    static constexpr int largestSmall = 250;

    /// Up to `longest` bytes of what is left.
    std::string text(std::size_t longest = SIZE_MAX) {
        const std::size_t count = size_ < longest ? size_ : longest;
        std::string text(reinterpret_cast<const char*>(data_), count);
        skip(count);
        return text;
    }

  private:
    void skip(std::size_t count) {
        data_ += count;
        size_ -= count;
    }

    const std::uint8_t* data_;
    std::size_t size_;
};
