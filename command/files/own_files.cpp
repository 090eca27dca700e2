#include "command/files/own_files.h"

namespace nevrel {

std::filesystem::path OwnFile(const char* name) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    std::filesystem::path file = program;
    file.replace_filename(name);
    if (std::error_code error; std::filesystem::exists(file, error)) return file;
    const std::filesystem::path installed = program.parent_path() / NEVREL_MODULE_FOLDER / name;
    return installed.lexically_normal();
}

}  // namespace nevrel
