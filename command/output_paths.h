// Where smoothed pictures go.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nevrel {

/// A picture's way from file to file.
struct PicturePaths {
    std::filesystem::path input, output;
};

/// Whether `output` names a folder: an existing one, or a new one by a slash at its end.
[[nodiscard]] bool IsFolder(const std::filesystem::path& output);

/// The output of each input. In a folder it has the input's file name, with the extension `format`
/// when that is not empty; otherwise `output` is the only one. Throws UsageError when the words do
/// not fit together, two outputs are the same file, or an output is an input, under whatever name.
[[nodiscard]] std::vector<PicturePaths> FindOutputs(
    const std::vector<std::filesystem::path>& inputs, const std::filesystem::path& output,
    const std::string& format);

/// Makes the folder if `output` names a new one, and sees that files can be made in every folder
/// that pictures go to. Throws PictureError with the folder and the reason.
void PrepareFolders(const std::filesystem::path& output, const std::vector<PicturePaths>& pictures);

}  // namespace nevrel
