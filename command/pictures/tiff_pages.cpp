#include "command/pictures/tiff_pages.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>
#include <span>

#include "command/pictures/file_numbers.h"

namespace nevrel {
namespace {

/// The directories of a TIFF, one for each page, linked by their places in the file.
class TiffDirectories {
  public:
    explicit TiffDirectories(std::ifstream& file) : file_(file) {
        order_ = file.get() == 'I' ? ByteOrder::LittleEndian : ByteOrder::BigEndian;
        isBig_ = number(2, 2) == 43;
    }

    /// A link to where no directory can be counts as one.
    [[nodiscard]] std::size_t count() {
        const std::uint64_t entrySize = isBig_ ? 20 : 12, countSize = isBig_ ? 8 : 2,
                            linkSize = isBig_ ? 8 : 4;
        std::set<std::uint64_t> places;  // a chain may lead back to its start
        auto place = number(linkSize, linkSize);
        while (place && *place != 0 && places.insert(*place).second) {
            const auto entries = number(*place, countSize);
            place = entries ? number(*place + countSize + *entries * entrySize, linkSize)
                            : std::nullopt;
        }
        return places.size();
    }

  private:
    /// Nothing beyond the end of the file.
    [[nodiscard]] std::optional<std::uint64_t> number(std::uint64_t at, std::size_t size) {
        std::array<unsigned char, 8> bytes{};
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(at));
        if (!file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
            return std::nullopt;
        return Number(std::span<const unsigned char>(bytes).first(size), order_);
    }

    std::ifstream& file_;
    ByteOrder order_{};
    bool isBig_ = false;
};

}  // namespace

std::size_t CountTiffPages(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return TiffDirectories(file).count();
}

}  // namespace nevrel
