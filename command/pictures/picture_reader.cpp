#include "command/pictures/picture.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <utility>

#include "command/errors.h"
#include "command/files/descriptor.h"
#include "command/files/memory_file.h"
#include "command/pictures/dpx_file.h"
#include "command/pictures/tiff_pages.h"

namespace nevrel {
namespace {

constexpr std::array<const char*, 6> formats{"png", "tiff", "targa", "bmp", "openexr", "dpx"};

bool IsSupported(const std::string& format) {
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

void RequireSupported(const std::filesystem::path& path, const std::string& format) {
    if (IsSupported(format)) return;
    throw PictureError(
        path, format + " pictures are not supported; png, tiff, targa, bmp, openexr and dpx are");
}

/// The samples of files with straight alpha come as they are only when asked for.
OIIO::ImageSpec ReadingHints() {
    OIIO::ImageSpec hints;
    hints.attribute(straightAttribute, 1);
    return hints;
}

bool FileIsAssociated(const std::string& format, const OIIO::ImageSpec& spec) {
    if (format == "openexr") return true;
    if (spec.alpha_channel < 0 || format == "bmp" || format == "dpx") return false;
    return spec.get_int_attribute(straightAttribute) == 0;
}

void RequireFlat(const std::filesystem::path& path, const OIIO::ImageSpec& spec) {
    if (spec.deep) throw UnreadablePicture(path, "holds deep pixels, which are not supported");
    if (spec.depth > 1) throw UnreadablePicture(path, "holds a volume, which is not supported");
}

/// The samples of other colour models would be smoothed and written as if they were red, green and
/// blue.
void RequireRgbOrGrey(const std::filesystem::path& path, const OIIO::ImageSpec& spec) {
    enum Photometric {
        minIsWhite = 0,
        minIsBlack = 1,
        separated = 5,
        yCbCr = 6,
        cieLab = 8,
        ituLab = 10
    };
    const int model = spec.get_int_attribute("tiff:PhotometricInterpretation", -1);
    if (model == separated)
        throw UnreadablePicture(path, "holds CMYK colors, which are not supported");
    if (model >= cieLab && model <= ituLab)
        throw UnreadablePicture(path, "holds L*a*b* colors, which are not supported");
    if (model == yCbCr && spec.get_string_attribute("compression") != "jpeg")
        throw UnreadablePicture(path, "holds YCbCr colors, which are not supported");
    if ((model == minIsWhite || model == minIsBlack) && spec.nchannels > 2) {
        throw UnreadablePicture(path, "holds grey with " + std::to_string(spec.nchannels - 1) +
                                          " further channels, which is not supported");
    }
}

Part ReadPart(OIIO::ImageInput& input, const std::string& format, const std::filesystem::path& path,
              int subimage) {
    const OIIO::ImageSpec spec = input.spec(subimage);
    RequireFlat(path, spec);
    RequireRgbOrGrey(path, spec);
    const bool associated = FileIsAssociated(format, spec);
    if (format == "dpx") {
        const DpxFile dpx(path);
        if (!dpx.isWordwise()) {
            Part part = MakePart(spec, associated);
            dpx.read(part);
            return part;
        }
    }
    Part part = MakePart(spec, associated);
    const bool read = input.read_image(subimage, 0, 0, spec.nchannels, OIIO::TypeDesc::UNKNOWN,
                                       part.samples.get());
    // Some readers report a missing part of a file and succeed all the same.
    const std::string error = input.geterror();
    if (!read || !error.empty())
        throw UnreadablePicture(path, "damaged or truncated: " + OneLine(error));
    return part;
}

void RequireRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) throw UnreadablePicture(path, "no such file");
    if (!std::filesystem::is_regular_file(status))
        throw UnreadablePicture(path, "is not a regular file");
}

/// The name under which the library opens the file; it takes a question mark for the start of a
/// query.
std::string LibraryName(const std::filesystem::path& path, const Descriptor& file) {
    return path.string().find('?') == std::string::npos ? path.string() : file.path();
}

}  // namespace

Part MakePart(const OIIO::ImageSpec& spec, bool associated) {
    Part part{spec, nullptr, associated};
    part.samples = std::make_unique_for_overwrite<std::byte[]>(
        static_cast<std::size_t>(spec.image_bytes(true)));
    return part;
}

Picture ReadPicture(const std::filesystem::path& path) try {
    RequireRegularFile(path);
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) ThrowSystemError(path, "cannot be read");
    auto png = ReadPngDetails(path);  // also keeps what is truncated from the library, which leaks
    const OIIO::ImageSpec hints = ReadingHints();
    const auto input = OIIO::ImageInput::open(LibraryName(path, file), &hints);
    if (!input) throw UnreadablePicture(path, "is no picture: " + OneLine(OIIO::geterror()));
    Picture picture{input->format_name(), {}, std::move(png)};
    RequireSupported(path, picture.format);
    for (int subimage = 0; input->seek_subimage(subimage, 0); ++subimage) {
        picture.parts.push_back(ReadPart(*input, picture.format, path, subimage));
        if (input->seek_subimage(subimage, 1))
            throw UnreadablePicture(path, "holds reduced copies (MIP levels)");
    }
    static_cast<void>(input->geterror());  // there is one after the last part as well
    if (picture.format == "tiff" && picture.parts.size() < CountTiffPages(path)) {
        throw UnreadablePicture(path, "damaged or truncated: cannot find page " +
                                          std::to_string(picture.parts.size() + 1));
    }
    return picture;
} catch (const std::bad_alloc&) {
    throw UnreadablePicture(path, "not enough memory for its pixels");
}

Picture ReadStandardInput() {
    MemoryFile file;
    std::vector<std::byte> block(1 << 20);
    std::size_t size = 0;
    for (;;) {
        const ssize_t got = read(STDIN_FILENO, block.data(), block.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) ThrowSystemError(standardStream, "cannot be read");
        if (got == 0) break;
        file.set(size, std::span(block).first(static_cast<std::size_t>(got)));
        size += static_cast<std::size_t>(got);
    }
    if (size == 0) throw UnreadablePicture(standardStream, "the standard input is empty");
    try {
        return ReadPicture(file.path());
    } catch (const UnreadablePicture& error) {
        std::string text = error.what();
        text.erase(0, file.path().size() + 2);  // the name and what divides it from the reason
        if (const std::size_t name = text.find(file.path()); name != std::string::npos)
            text.replace(name, file.path().size(), standardStream);
        throw UnreadablePicture(standardStream, text);
    }
}

std::string FormatForPath(const std::filesystem::path& path) {
    const auto output = OIIO::ImageOutput::create("picture" + path.extension().string());
    static_cast<void>(OIIO::geterror());
    if (!output) throw PictureError(path, "its extension names no picture format");
    RequireSupported(path, output->format_name());
    return output->format_name();
}

}  // namespace nevrel
