// Picture files into the command: each comes out smoothed, or not at all with the cause in one
// line.
#include <dlfcn.h>

#include <array>
#include <vector>

#include "command/run_command.h"
#include "fuzz/fuzz_target.h"
#include "tests/temp_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 6> extensions{".png", ".tif", ".tga", ".bmp", ".exr", ".dpx"};

/// The module beside this program, which stays loaded.
std::string LoadModule() {
    const fs::path module = fs::read_symlink("/proc/self/exe").replace_filename("nevrel.so");
    Require(dlopen(module.c_str(), RTLD_NOW | RTLD_NODELETE) != nullptr, "no module");
    return module.string();
}

/// Whether the command succeeds; requires that a failure is told in one line.
bool Run(const std::vector<std::string>& arguments) {
    static const std::string module = LoadModule();
    std::vector<const char*> argv{"nevrel", "--module", module.c_str()};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    int complaints = 0;
    const int status = nevrel::RunCommand(
        static_cast<int>(argv.size()), argv.data(), [&](const std::string& line) {
            Require(!line.empty() && line.find('\n') == std::string::npos,
                    "not one line: '" + line + "'");
            ++complaints;
        });
    Require(status >= 0 && status <= 2 && (status == 0 || complaints > 0),
            "status " + std::to_string(status));
    return status == 0;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const TempFolder folder;
    const char* extension = extensions[data[0] % extensions.size()];
    const unsigned choice = data[1];
    const bool otherFormat = choice % 4 == 0;
    const std::string input = (folder.path() / "in").string() + extension;
    const std::string output =
        (folder.path() / "out").string() + (otherFormat ? extensions[choice / 4 % 6] : extension);
    std::vector<std::string> arguments{"smooth", input, "-o", output};
    if ((choice & 16) != 0)
        arguments.insert(arguments.end(), {"--color-key", "#FF0000", "--key-threshold", "9"});
    if ((choice & 32) != 0)
        arguments.insert(arguments.end(), {"--depth", (choice & 64) != 0 ? "16" : "float"});
    WriteText(input, std::string(data + 2, data + size));

    const bool succeeded = Run(arguments);
    Require(fs::exists(output) == succeeded, "half a picture");
    const auto left = std::distance(fs::directory_iterator(folder.path()), {});
    Require(left == (succeeded ? 2 : 1), "a file is left behind");
    return 0;
}
