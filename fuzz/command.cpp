#include "fuzz/command.h"

#include <dlfcn.h>

#include "command/run_command.h"
#include "fuzz/fuzz_target.h"

namespace {

constexpr char moduleName[] = "nevrel.so";

}  // namespace

CommandBench& CommandBench::get() {
    static CommandBench bench;
    return bench;
}

CommandBench::CommandBench() {
    std::filesystem::copy_file(
        std::filesystem::read_symlink("/proc/self/exe").replace_filename(moduleName),
        file(moduleName));
    Require(dlopen(file(moduleName).c_str(), RTLD_NOW | RTLD_NODELETE) != nullptr,
            "the module does not load");
}

bool CommandBench::run(const std::vector<std::string>& arguments) const {
    const std::string module = file(moduleName);
    std::vector<const char*> argv{"nevrel", "--module", module.c_str()};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    int complaints = 0;
    const int status = nevrel::RunCommand(
        static_cast<int>(argv.size()) - 1, argv.data(), [&](const std::string& line) {
            Require(!line.empty() && line.find('\n') == std::string::npos,
                    "not one line: '" + line + "'");
            ++complaints;
        });
    Require(status >= 0 && status <= 2 && (status == 0 || complaints > 0),
            "status " + std::to_string(status));
    return status == 0;
}

int CommandBench::clear() const {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
        if (entry.path().filename() != moduleName)
            count += std::filesystem::remove_all(entry.path()) ? 1 : 0;
    }
    return count;
}
