// Which pictures are smoothed, and where they go.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "command/sequences/name_pattern.h"

namespace nevrel {

/// A picture's way from file to file.
struct PicturePaths {
    std::filesystem::path input, output;  ///< no output where it is only read
    std::filesystem::path mask{};         ///< empty without one
};

/// What to do about frames that are asked for, or lie between others, and are not there.
enum class Missing { Error, Skip };

/// What the user said of inputs and outputs.
struct PictureRequest {
    std::vector<std::filesystem::path> inputs;
    std::filesystem::path output;       ///< empty where pictures are only read
    std::string format;                 ///< extension in a folder; empty for the inputs' own
    bool patterns = true;               ///< names may have a place for a frame number
    std::optional<std::string> frames;  ///< of patterns; all by default
    Missing missing = Missing::Error;
    FrameNumber offset = 0;      ///< from a frame's number to that of its output
    std::filesystem::path mask;  ///< a file for all, or a pattern of frames; may be empty
};

/// The pictures of one run. A frame of a sequence takes a number and no more.
class PictureList {
  public:
    /// An input is a file, a folder whose pictures are taken in natural order, or a pattern of
    /// frames. The output is a folder, a pattern where the only input is one, or one file; input
    /// and output may be standardStream where there is but one picture. Throws
    /// UsageError when the words do not fit together, there is nothing to smooth, frames are
    /// missing, two outputs are the same file, or an output is an input, under whatever name.
    explicit PictureList(const PictureRequest& request);

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] PicturePaths operator[](std::size_t index) const;
    /// What the user should know of the frames that were found, a line each.
    [[nodiscard]] const std::vector<std::string>& remarks() const { return remarks_; }
    /// Throws UsageError, naming `option`, where what is to be written there would replace a
    /// picture or a mask that is read.
    void requireNotRead(const std::filesystem::path& file, const std::string& option) const;

  private:
    /// Files, or the frames of a pattern.
    struct Source {
        std::size_t begin = 0;  ///< index of its first picture
        std::vector<std::filesystem::path> files;
        std::optional<NamePattern> pattern, output;
        std::vector<FrameNumber> frames;
    };

    void addFile(const std::filesystem::path& file);
    void addFolder(const std::filesystem::path& folder);
    void addSequence(const NamePattern& pattern, const PictureRequest& request);
    [[nodiscard]] std::vector<FrameNumber> findFrames(const NamePattern& pattern,
                                                      const PictureRequest& request);
    void setOutput(const PictureRequest& request);
    void setOutputFile();
    void setMask(const PictureRequest& request);
    void requireDistinct() const;
    void requireNoInput() const;

    std::vector<Source> sources_;
    std::size_t size_ = 0;
    std::filesystem::path output_;  ///< folder or file of those that are no frames
    bool intoFolder_ = false;
    std::string format_;
    FrameNumber offset_ = 0;
    std::filesystem::path mask_;
    std::optional<NamePattern> masks_;
    std::vector<std::string> remarks_;
};

/// Whether `output` names a folder: an existing one, or a new one by a slash at its end.
[[nodiscard]] bool IsFolder(const std::filesystem::path& output);

/// Sees that the file can be made in its folder. Throws PictureError with the folder and the
/// reason.
void RequirePlaceFor(const std::filesystem::path& file);

/// Makes the folder if `output` names a new one, and sees that files can be made in every folder
/// that pictures go to. Throws PictureError with the folder and the reason.
void PrepareFolders(const std::filesystem::path& output, const PictureList& pictures);

}  // namespace nevrel
