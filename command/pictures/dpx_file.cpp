#include "command/pictures/dpx_file.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "command/errors.h"

namespace nevrel {
namespace {

/// A number in the header; what is undefined has all its bits set.
struct Field {
    std::size_t at, size;
};
namespace fields {
constexpr Field offsetOfPixels{4, 4}, fileSize{16, 4}, elements{770, 2}, width{772, 4},
    height{776, 4}, descriptor{800, 1}, bits{803, 1}, packing{804, 2}, encoding{806, 2},
    elementOffset{808, 4}, rowPadding{812, 4}, imagePadding{816, 4};
}  // namespace fields
constexpr std::size_t headerSize = 820;
constexpr std::uint64_t undefined = 0xFFFFFFFF;

class Header {
  public:
    explicit Header(std::span<const std::byte> bytes) : bytes_(bytes) {}

    [[nodiscard]] ByteOrder order() const {
        return bytes_[0] == std::byte{'X'} ? ByteOrder::LittleEndian : ByteOrder::BigEndian;
    }
    [[nodiscard]] std::uint64_t operator[](Field field) const {
        return Number(bytes_.subspan(field.at, field.size), order());
    }
    [[nodiscard]] std::uint64_t orZero(Field field) const {
        const std::uint64_t number = (*this)[field];
        return number == undefined ? 0 : number;
    }

  private:
    std::span<const std::byte> bytes_;
};

std::size_t Channels(std::uint64_t descriptor) {
    constexpr unsigned rgb = 50, rgba = 51;
    return descriptor == rgba ? 4 : descriptor == rgb ? 3 : 1;
}

/// Whether so many bytes are just so many rows.
bool AreRows(std::uint64_t bytes, std::uint64_t rows, std::uint64_t rowSize) {
    return rowSize > 0 && bytes % rowSize == 0 && bytes / rowSize == rows;
}

}  // namespace

DpxFile::DpxFile(const std::filesystem::path& path) : path_(path) {
    std::array<std::byte, headerSize> bytes{};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), headerSize))
        throw UnreadablePicture(path, "is truncated");
    const Header header(bytes);
    order_ = header.order();
    bits_ = static_cast<unsigned>(header[fields::bits]);
    packing_ = static_cast<DpxPacking>(header[fields::packing]);
    width_ = header[fields::width];
    height_ = header[fields::height];
    channels_ = Channels(header[fields::descriptor]);
    offset_ = header.orZero(fields::elementOffset);
    if (offset_ == 0) offset_ = header[fields::offsetOfPixels];
    rowPadding_ = header.orZero(fields::rowPadding);
    imagePadding_ = header.orZero(fields::imagePadding);
    requireSupported(static_cast<unsigned>(header[fields::descriptor]),
                     header[fields::encoding] == 1,
                     static_cast<unsigned>(header[fields::elements]));
    findRowSize(std::filesystem::file_size(path), header.orZero(fields::fileSize));
}

void DpxFile::requireSupported(unsigned descriptor, bool isRunLengthEncoded,
                               unsigned elements) const {
    constexpr std::array descriptors{1U, 2U, 3U, 4U, 6U, 8U, 50U, 51U};
    constexpr std::array sampleBits{8U, 10U, 12U, 16U, 32U, 64U};
    const auto refuse = [&](const std::string& what) {
        throw UnreadablePicture(path_, "holds " + what + ", which is not supported");
    };
    const auto knows = [](const auto& all, unsigned one) {
        return std::find(all.begin(), all.end(), one) != all.end();
    };
    if (elements != 1) refuse(std::to_string(elements) + " image elements");
    if (!knows(descriptors, descriptor))
        refuse("channels of kind " + std::to_string(descriptor) + " instead of grey, RGB or RGBA");
    if (!knows(sampleBits, bits_)) refuse("samples of " + std::to_string(bits_) + " bits");
    if (isRunLengthEncoded) refuse("run-length encoded samples");
    if ((bits_ == 10 || bits_ == 12) && packing_ > DpxPacking::FilledLow)
        refuse("samples packed by method " + std::to_string(static_cast<int>(packing_)));
}

/// Writers disagree on whether rows end on a 32-bit boundary and on whether that is told as
/// padding, so the size of the file has to tell.
void DpxFile::findRowSize(std::uint64_t actualSize, std::uint64_t declaredSize) {
    const std::uint64_t samples =
        isWordwise() ? std::uint64_t{bits_ / 8} * width_ * channels_ : row().bytes();
    const std::uint64_t padded = (samples + 3) / 4 * 4;
    const std::array candidates{padded, samples + rowPadding_, samples, padded + rowPadding_};
    for (const std::uint64_t size : {declaredSize, actualSize}) {
        for (const std::uint64_t trailing : {std::uint64_t{0}, imagePadding_}) {
            if (size < offset_ + trailing) continue;
            const auto found =
                std::find_if(candidates.begin(), candidates.end(), [&](std::uint64_t candidate) {
                    return AreRows(size - offset_ - trailing, height_, candidate);
                });
            if (found == candidates.end()) continue;
            if (size > actualSize) throw UnreadablePicture(path_, "is truncated");
            rowSize_ = *found;
            return;
        }
    }
    requireAlignedWithin(actualSize, padded);
    rowSize_ = padded;
}

/// For files that end with something else than their rows.
void DpxFile::requireAlignedWithin(std::uint64_t actualSize, std::uint64_t rowSize) const {
    const std::uint64_t room = actualSize < offset_ ? 0 : actualSize - offset_;
    if (rowSize == 0 || room / rowSize < height_) throw UnreadablePicture(path_, "is truncated");
    if (isWordwise()) return;
    const auto isPackedAs = [&](DpxPacking packing) {
        const DpxRow row(order_, bits_, packing, width_, channels_);
        return AreRows(room, height_, row.paddedBytes());
    };
    if (row().bytes() != rowSize || rowPadding_ != 0 || isPackedAs(DpxPacking::Packed) ||
        isPackedAs(DpxPacking::FilledHigh))
        throw UnreadablePicture(path_, "has a size that does not tell how its rows are stored");
}

void DpxFile::read(Part& part) const {
    const DpxRow row = this->row();
    const PartSpec& spec = part.spec;
    const std::size_t sampleSize = bits_ == 8 ? 1 : 2;
    if (static_cast<std::size_t>(spec.width) != width_ ||
        static_cast<std::size_t>(spec.height) != height_ ||
        spec.pixelBytes() != channels_ * sampleSize)
        throw UnreadablePicture(path_, "has a header that contradicts itself");
    std::ifstream file(path_, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(offset_));
    std::vector<std::byte> bytes(rowSize_);
    const auto stride = spec.rowBytes();
    for (std::size_t y = 0; y < height_; ++y) {
        if (!file.read(reinterpret_cast<char*>(bytes.data()),
                       static_cast<std::streamsize>(bytes.size())))
            throw UnreadablePicture(path_, "cannot be read");
        row.unpack(bytes, part.samples.get() + y * stride);
    }
}

void LayDpxRows(const Part& part, const std::string& packingName, MemoryFile& file) {
    std::array<std::byte, headerSize> bytes{};
    std::copy_n(file.bytes().begin(), bytes.size(), bytes.begin());
    const Header header(bytes);
    const ByteOrder order = header.order();
    const auto set = [&](Field field, std::uint64_t number) {
        std::array<std::byte, 4> stored{};
        const std::span value = std::span(stored).first(field.size);
        PutNumber(number, value, order);
        file.set(field.at, value);
    };
    const DpxPacking packing = packingName == "Packed"             ? DpxPacking::Packed
                               : packingName == "Filled, method B" ? DpxPacking::FilledLow
                                                                   : DpxPacking::FilledHigh;
    const DpxRow row(order, static_cast<unsigned>(header[fields::bits]), packing,
                     header[fields::width], Channels(header[fields::descriptor]));
    std::vector<std::byte> padded(row.paddedBytes());
    const std::uint64_t offset = header[fields::elementOffset];
    const auto stride = part.spec.rowBytes();
    const std::uint64_t rows = header[fields::height];
    for (std::size_t y = 0; y < rows; ++y) {
        row.pack(part.samples.get() + y * stride, padded);
        file.set(offset + y * padded.size(), padded);
    }
    set(fields::packing, static_cast<std::uint64_t>(packing));
    set(fields::rowPadding, row.paddedBytes() - row.bytes());
    set(fields::fileSize, offset + rows * padded.size());
    file.resize(offset + rows * padded.size());
}

}  // namespace nevrel
