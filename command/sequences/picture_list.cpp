#include "command/sequences/picture_list.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "command/errors.h"
#include "command/files/folder.h"
#include "command/files/replace_file.h"
#include "command/pictures/picture.h"

namespace nevrel {
namespace {

namespace fs = std::filesystem;

/// What tells a file from all others, whatever its names.
using FileIdentity = std::pair<dev_t, ino_t>;

std::optional<FileIdentity> Identity(const fs::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

bool Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

fs::path OutputInFolder(const fs::path& input, const fs::path& folder, const std::string& format) {
    fs::path output = folder / input.filename();
    if (!format.empty()) output.replace_extension(format);
    return output;
}

/// Where files really lie, folder by folder.
class Places {
  public:
    /// The same for two paths of one file, also when a link leads there.
    fs::path of(const fs::path& path) {
        const fs::path target = FollowLinks(path);
        if (!folder_ || target.parent_path() != *folder_) {
            folder_ = target.parent_path();
            std::error_code error;
            place_ = fs::weakly_canonical(folder_->empty() ? "." : *folder_, error);
            if (error) place_ = *folder_;  // writing will tell what is wrong with it
        }
        return place_ / target.filename();
    }

  private:
    std::optional<fs::path> folder_;  ///< the one seen last
    fs::path place_;
};

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) ThrowSystemError(folder, "cannot be made", error.value());
}

void RequireWritable(const fs::path& folder) {
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (status.type() == fs::file_type::none)
        ThrowSystemError(folder, "cannot be reached", error.value());
    if (!fs::exists(status)) throw PictureError(folder, "no such folder");
    if (!fs::is_directory(status)) throw PictureError(folder, "is no folder");
    if (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        ThrowSystemError(folder, "cannot be written to");
}

/// A name given by the user asks for a format that can be written.
void RequireFormat(const fs::path& name, const std::string& option) try {
    static_cast<void>(FormatForPath(name));
} catch (const PictureError& error) {
    throw UsageError(option + error.what());
}

/// Tells the pictures in a folder from other files by their extensions.
class PictureNames {
  public:
    bool contains(const fs::path& name) {
        const auto [known, isNew] = extensions_.emplace(name.extension().string(), true);
        if (isNew) {
            try {
                static_cast<void>(FormatForPath(name));
            } catch (const PictureError&) {
                known->second = false;
            }
        }
        return known->second;
    }

  private:
    std::map<std::string, bool> extensions_;
};

}  // namespace

bool IsFolder(const fs::path& output) {
    std::error_code error;
    return !output.has_filename() || fs::is_directory(output, error);
}

PictureList::PictureList(const PictureRequest& request)
    : format_(request.format), offset_(request.offset) {
    for (const fs::path& input : request.inputs) {
        std::error_code error;
        const bool isFile = !request.patterns || Exists(input);
        const auto pattern = isFile ? std::nullopt : NamePattern::parse(input);
        if (fs::is_directory(input, error)) {
            addFolder(input);
        } else if (pattern) {
            addSequence(*pattern, request);
        } else {
            addFile(isFile ? input
                           : input.parent_path() / WithoutEscapes(input.filename().string()));
        }
    }
    const bool isSequence =
        std::any_of(sources_.begin(), sources_.end(), [](const Source& s) { return !!s.pattern; });
    if (!isSequence && request.frames)
        throw UsageError("--frames: is for a pattern such as shot.####.png");
    if (!isSequence && request.offset != 0)
        throw UsageError("--offset: is for a pattern such as shot.####.png");
    setMask(request);
    if (request.output.empty()) return;
    setOutput(request);
    requireDistinct();
    requireNoInput();
}

void PictureList::addFile(const fs::path& file) {
    if (sources_.empty() || sources_.back().pattern) sources_.emplace_back().begin = size_;
    sources_.back().files.push_back(file);
    ++size_;
}

void PictureList::addFolder(const fs::path& folder) {
    PictureNames pictures;
    std::vector<fs::path> files;
    ForEachEntry(folder, [&](const fs::directory_entry& entry) {
        const fs::path name = entry.path().filename();
        std::error_code ignored;
        if (!name.string().starts_with('.') && pictures.contains(name) &&
            !entry.is_directory(ignored))
            files.push_back(entry.path());
    });
    if (files.empty()) throw UsageError(folder.string() + ": is a folder without pictures");
    std::sort(files.begin(), files.end(), [](const fs::path& a, const fs::path& b) {
        return NaturallyLess(a.native(), b.native());
    });
    for (const fs::path& file : files) addFile(file);
}

std::vector<FrameNumber> PictureList::findFrames(const NamePattern& pattern,
                                                 const PictureRequest& request) {
    const std::vector<FrameNumber> present = pattern.find();
    std::vector<FrameNumber> frames = present;
    std::vector<FrameRange> missing = GapsBetween(present);
    if (request.frames) {
        frames = ParseFrames(*request.frames, "--frames");
        const auto isPresent = [&](FrameNumber frame) {
            return std::binary_search(present.begin(), present.end(), frame);
        };
        const auto absent = std::stable_partition(frames.begin(), frames.end(), isPresent);
        std::sort(absent, frames.end());
        missing = RangesOf(std::span(absent, frames.end()));
        frames.erase(absent, frames.end());
    }
    if (frames.empty()) {
        throw UsageError(pattern.text().string() + ": no such frames" +
                         (request.frames ? " as " + *request.frames : "") +
                         "; --no-pattern takes a name as it is");
    }
    if (missing.empty()) return frames;
    const std::string text = pattern.text().string() + ": frames " + RangesText(missing) +
                             " are missing, " + std::to_string(frames.size()) + " are there";
    if (request.missing == Missing::Error)
        throw UsageError(text + "; --missing skip goes on without");
    remarks_.push_back(text);
    return frames;
}

void PictureList::addSequence(const NamePattern& pattern, const PictureRequest& request) {
    Source source;
    source.begin = size_;
    source.pattern = pattern;
    source.frames = findFrames(pattern, request);
    size_ += source.frames.size();
    sources_.push_back(std::move(source));
}

void PictureList::setOutput(const PictureRequest& request) {
    output_ = request.output;
    intoFolder_ = IsFolder(output_);
    if (!intoFolder_) {
        setOutputFile();
        return;
    }
    for (const fs::path& input : request.inputs) {
        if (input != standardStream) continue;
        throw UsageError("-: the standard input has no name that an output in a folder could have");
    }
    if (!format_.empty()) RequireFormat("*." + format_, "--format: ");
    for (Source& source : sources_) {
        if (source.pattern) source.output = source.pattern->movedTo(output_, format_);
    }
}

void PictureList::setOutputFile() {
    if (output_ == standardStream && size_ == 1) {
        if (!format_.empty()) RequireFormat("*." + format_, "--format: ");
        return;
    }
    if (output_ == standardStream) {
        throw UsageError("--output: the standard output takes one picture, not " +
                         std::to_string(size_));
    }
    const std::string name = std::string("'").append(output_.string()).append("'");
    if (!format_.empty()) {
        throw UsageError("--format: is for a folder as output; the extension of " + name +
                         " names its format");
    }
    const bool isSequence = sources_.size() == 1 && sources_.front().pattern;
    if (isSequence) sources_.front().output = NamePattern::parse(output_);
    if (size_ > 1 && (!isSequence || !sources_.front().output)) {
        const std::string pattern =
            isSequence ? ", or to a pattern such as shot.####.png" : std::string();
        throw UsageError("--output: several pictures go to a folder" + pattern + ", and " + name +
                         " is none; to make it, write '" + output_.string() + "/'");
    }
    RequireFormat(output_, "");
}

void PictureList::setMask(const PictureRequest& request) {
    mask_ = request.mask;
    if (mask_.empty() || Exists(mask_)) return;
    if (request.patterns) masks_ = NamePattern::parse(mask_);
    if (!masks_) throw UsageError("--mask: " + mask_.string() + ": no such file");
    std::vector<FrameNumber> missing;
    for (const Source& source : sources_) {
        if (!source.pattern)
            throw UsageError("--mask: a pattern is for inputs that are patterns too");
        for (const FrameNumber frame : source.frames) {
            if (!Exists(masks_->at(frame))) missing.push_back(frame);
        }
    }
    std::sort(missing.begin(), missing.end());
    if (!missing.empty()) {
        throw UsageError("--mask: " + mask_.string() + ": frames " + RangesText(RangesOf(missing)) +
                         " are missing");
    }
}

PicturePaths PictureList::operator[](std::size_t index) const {
    const auto after = std::upper_bound(
        sources_.begin(), sources_.end(), index,
        [](std::size_t wanted, const Source& source) { return wanted < source.begin; });
    const Source& source = *std::prev(after);
    const std::size_t within = index - source.begin;
    if (!source.pattern) {
        const fs::path& input = source.files[within];
        return {input, intoFolder_ ? OutputInFolder(input, output_, format_) : output_, mask_};
    }
    const FrameNumber frame = source.frames[within];
    return {source.pattern->at(frame), source.output ? source.output->at(frame + offset_) : output_,
            masks_ ? masks_->at(frame) : mask_};
}

void PictureList::requireDistinct() const {
    Places places;
    std::vector<std::pair<std::size_t, std::size_t>> outputs;  // hash of the place, index
    outputs.reserve(size_);
    for (std::size_t i = 0; i < size_; ++i)
        outputs.emplace_back(fs::hash_value(places.of((*this)[i].output)), i);
    std::sort(outputs.begin(), outputs.end());
    for (std::size_t i = 1; i < outputs.size(); ++i) {
        if (outputs[i - 1].first != outputs[i].first) continue;
        const PicturePaths first = (*this)[outputs[i - 1].second];
        const PicturePaths second = (*this)[outputs[i].second];
        if (places.of(first.output) != places.of(second.output)) continue;
        throw UsageError(second.output.string() + ": would be the output of " +
                         first.input.string() + " and of " + second.input.string());
    }
}

void PictureList::requireNoInput() const {
    std::vector<FileIdentity> inputs;
    for (std::size_t i = 0; i < size_; ++i) {
        const PicturePaths paths = (*this)[i];
        for (const fs::path& read : {paths.input, paths.mask}) {
            if (const auto identity = Identity(read)) inputs.push_back(*identity);
        }
    }
    std::sort(inputs.begin(), inputs.end());
    for (std::size_t i = 0; i < size_; ++i) {
        const PicturePaths paths = (*this)[i];
        const auto identity = Identity(paths.output);
        if (!identity || !std::binary_search(inputs.begin(), inputs.end(), *identity)) continue;
        const bool own = identity == Identity(paths.input);
        throw UsageError(paths.output.string() + ": is " +
                         (own ? "the input itself" : "another input") + "; choose another output");
    }
}

void PictureList::requireNotRead(const fs::path& file, const std::string& option) const {
    const auto identity = Identity(file);
    for (std::size_t i = 0; identity && i < size_; ++i) {
        const PicturePaths paths = (*this)[i];
        for (const fs::path& read : {paths.input, paths.mask}) {
            if (Identity(read) != identity) continue;
            throw UsageError(option + ": " + file.string() +
                             ": is an input; choose another output");
        }
    }
}

void RequirePlaceFor(const fs::path& file) {
    const fs::path folder = FollowLinks(file).parent_path();
    RequireWritable(folder.empty() ? "." : folder);
}

void PrepareFolders(const fs::path& output, const PictureList& pictures) {
    if (output == standardStream || output.empty()) return;
    if (IsFolder(output)) MakeFolder(output);
    std::optional<fs::path> last;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const fs::path folder = FollowLinks(pictures[i].output).parent_path();
        if (folder != last) RequireWritable(folder.empty() ? "." : folder);
        last = folder;
    }
}

}  // namespace nevrel
