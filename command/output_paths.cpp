#include "command/output_paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "command/errors.h"
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

void RequireNoInput(const std::vector<PicturePaths>& pictures) {
    std::set<FileIdentity> inputs;
    for (const PicturePaths& paths : pictures) {
        if (const auto identity = Identity(paths.input)) inputs.insert(*identity);
    }
    for (const PicturePaths& paths : pictures) {
        const auto identity = Identity(paths.output);
        if (!identity || !inputs.contains(*identity)) continue;
        const bool own = identity == Identity(paths.input);
        throw UsageError(paths.output.string() + ": is " +
                         (own ? "the input itself" : "another input") + "; choose another output");
    }
}

void RequireDistinct(const std::vector<PicturePaths>& pictures) {
    std::map<fs::path, const fs::path*> inputs;  // by the place of the output
    for (const PicturePaths& paths : pictures) {
        const fs::path target = FollowLinks(paths.output);
        std::error_code error;
        fs::path place = fs::weakly_canonical(target, error);
        if (error) place = target;  // writing will tell what is wrong with it
        const auto [first, isNew] = inputs.emplace(place, &paths.input);
        if (isNew) continue;
        throw UsageError(paths.output.string() + ": would be the output of " +
                         first->second->string() + " and of " + paths.input.string());
    }
}

fs::path OutputInFolder(const fs::path& input, const fs::path& folder, const std::string& format) {
    const fs::path& named =
        input.has_filename() ? input : input.parent_path();  // without a slash at its end
    fs::path output = folder / named.filename();
    if (!format.empty()) output.replace_extension(format);
    return output;
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw PictureError(folder, "cannot be made: " + error.message());
}

void RequireWritable(const fs::path& folder) {
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (!fs::exists(status)) throw PictureError(folder, "no such folder");
    if (!fs::is_directory(status)) throw PictureError(folder, "is no folder");
    if (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        throw PictureError(folder, std::string("cannot be written to: ") + std::strerror(errno));
}

/// A name given by the user asks for a format that can be written.
void RequireFormat(const fs::path& name, const std::string& option) try {
    static_cast<void>(FormatForPath(name));
} catch (const PictureError& error) {
    throw UsageError(option + error.what());
}

}  // namespace

bool IsFolder(const fs::path& output) {
    std::error_code error;
    return !output.has_filename() || fs::is_directory(output, error);
}

std::vector<PicturePaths> FindOutputs(const std::vector<fs::path>& inputs, const fs::path& output,
                                      const std::string& format) {
    if (output.empty()) throw UsageError("--output: is empty");
    std::vector<PicturePaths> pictures;
    if (IsFolder(output)) {
        if (!format.empty()) RequireFormat("*." + format, "--format: ");
        for (const fs::path& input : inputs)
            pictures.push_back({input, OutputInFolder(input, output, format)});
    } else {
        if (inputs.size() > 1) {
            throw UsageError("--output: several inputs go to a folder, and '" + output.string() +
                             "' is none; to make it, write '" + output.string() + "/'");
        }
        if (!format.empty()) {
            throw UsageError("--format: is for a folder as output; the extension of '" +
                             output.string() + "' names its format");
        }
        RequireFormat(output, "");
        pictures.push_back({inputs.front(), output});
    }
    RequireDistinct(pictures);
    RequireNoInput(pictures);
    return pictures;
}

void PrepareFolders(const fs::path& output, const std::vector<PicturePaths>& pictures) {
    if (IsFolder(output)) MakeFolder(output);
    std::set<fs::path> folders;
    for (const PicturePaths& paths : pictures) {
        const fs::path folder = FollowLinks(paths.output).parent_path();
        if (folders.insert(folder).second) RequireWritable(folder.empty() ? "." : folder);
    }
}

}  // namespace nevrel
