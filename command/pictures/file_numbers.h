// Numbers as files hold them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace nevrel {

enum class ByteOrder { BigEndian, LittleEndian };

/// The unsigned number in up to 8 bytes.
template <typename Byte>
[[nodiscard]] std::uint64_t Number(std::span<const Byte> bytes, ByteOrder order) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t at = order == ByteOrder::BigEndian ? i : bytes.size() - 1 - i;
        number = number << 8 | static_cast<unsigned char>(bytes[at]);
    }
    return number;
}

/// Fills `bytes` with the lowest bits of the number.
inline void PutNumber(std::uint64_t number, std::span<std::byte> bytes, ByteOrder order) {
    for (std::size_t i = 0; i < bytes.size(); ++i, number >>= 8) {
        const std::size_t at = order == ByteOrder::LittleEndian ? i : bytes.size() - 1 - i;
        bytes[at] = static_cast<std::byte>(number & 0xFF);
    }
}

}  // namespace nevrel
