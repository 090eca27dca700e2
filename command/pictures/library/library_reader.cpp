#include <algorithm>
#include <array>
#include <mutex>
#include <utility>

#include "command/errors.h"
#include "command/files/descriptor.h"
#include "command/pictures/dpx_file.h"
#include "command/pictures/library/library_files.h"
#include "command/pictures/library/library_spec.h"
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

/// The name under which the library opens the file; it takes a question mark for the start of a
/// query.
std::string LibraryName(const std::filesystem::path& path, const Descriptor& file) {
    return path.string().find('?') == std::string::npos ? path.string() : file.path();
}

bool ReadSamples(OIIO::ImageInput& input, int subimage, const Part& part) {
    return input.read_image(subimage, 0, 0, static_cast<int>(part.spec.channels.size()),
                            OIIO::TypeDesc::UNKNOWN, part.samples.get());
}

/// Whether samples of both fill the same memory in the same way.
bool AreLaidOutAlike(const OIIO::ImageSpec& a, const OIIO::ImageSpec& b) {
    return a.width == b.width && a.height == b.height && a.format == b.format &&
           a.channelformats == b.channelformats && a.channelnames == b.channelnames;
}

/// Whether the quick reader could read the samples of an EXR. It is asked for rows in zip blocks
/// only: of uncompressed files it takes those for whole that end too early. As it opens the file
/// anew, another may have taken its place.
bool ReadQuickly(const std::string& name, int subimage, const Part& part) {
    const OIIO::ImageSpec& spec = LibraryDetails(part.spec);
    const std::string compression = spec.get_string_attribute("compression");
    const bool isZip = compression == "zip" || compression == "zips";
    if (!isZip || spec.tile_width > 0) return false;
    const auto quick = OpenWithLibrary(name, nullptr, ExrReader::Quick);
    const bool read = quick && quick->seek_subimage(subimage, 0) &&
                      AreLaidOutAlike(quick->spec(), spec) && ReadSamples(*quick, subimage, part) &&
                      quick->geterror().empty();
    static_cast<void>(OIIO::geterror());  // what is wrong is told by the complete reader
    return read;
}

Part ReadPart(OIIO::ImageInput& input, const std::string& format, const std::string& name,
              const std::filesystem::path& path, int subimage) {
    OIIO::ImageSpec spec = input.spec(subimage);
    RequireFlat(path, spec);
    RequireRgbOrGrey(path, spec);
    const bool associated = FileIsAssociated(format, spec);
    if (format == "dpx") {
        const DpxFile dpx(path);
        if (!dpx.isWordwise()) {
            spec.attribute("oiio:Endian", dpx.order() == ByteOrder::BigEndian ? "big" : "little");
            Part part = MakePart(FromLibrary(spec), associated);
            dpx.read(part);
            return part;
        }
    }
    Part part = MakePart(FromLibrary(spec), associated);
    const bool isRead = format == "openexr" && ReadQuickly(name, subimage, part);
    const bool read = isRead || ReadSamples(input, subimage, part);
    // Some readers report a missing part of a file and succeed all the same.
    const std::string error = input.geterror();
    if (!read || !error.empty())
        throw UnreadablePicture(path, "damaged or truncated: " + OneLine(error));
    return part;
}

}  // namespace

std::unique_ptr<OIIO::ImageInput> OpenWithLibrary(const std::string& name,
                                                  const OIIO::ImageSpec* hints,
                                                  ExrReader exrReader) {
    static std::mutex opening;
    const std::lock_guard<std::mutex> lock(opening);
    OIIO::attribute("openexr:core", exrReader == ExrReader::Quick ? 1 : 0);
    return OIIO::ImageInput::open(name, hints);
}

Picture ReadWithLibrary(const std::filesystem::path& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const OIIO::ImageSpec hints = ReadingHints();
    const std::string name = LibraryName(path, file);
    const auto input = OpenWithLibrary(name, &hints);
    if (!input) throw UnreadablePicture(path, "is no picture: " + OneLine(OIIO::geterror()));
    Picture picture{input->format_name(), {}, {}};
    RequireSupported(path, picture.format);
    for (int subimage = 0; input->seek_subimage(subimage, 0); ++subimage) {
        picture.parts.push_back(ReadPart(*input, picture.format, name, path, subimage));
        if (input->seek_subimage(subimage, 1))
            throw UnreadablePicture(path, "holds reduced copies (MIP levels)");
    }
    static_cast<void>(input->geterror());  // there is one after the last part as well
    if (picture.format == "tiff" && picture.parts.size() < CountTiffPages(path)) {
        throw UnreadablePicture(path, "damaged or truncated: cannot find page " +
                                          std::to_string(picture.parts.size() + 1));
    }
    return picture;
}

std::string FormatByLibrary(const std::filesystem::path& path) {
    const auto output = OIIO::ImageOutput::create("picture" + path.extension().string());
    static_cast<void>(OIIO::geterror());
    if (!output) throw PictureError(path, "its extension names no picture format");
    RequireSupported(path, output->format_name());
    return output->format_name();
}

}  // namespace nevrel
