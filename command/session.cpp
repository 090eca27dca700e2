#include "command/session.h"

#include <cstring>

#include "command/errors.h"

namespace nevrel {

using host_kit::CommandResult;
using host_kit::ModuleError;

Session::Session(const std::filesystem::path& modulePath, HWND mainWindow)
    : module_(modulePath), effect_(host_, module_.entryPoint()) {
    host_.identity.pluginPath = module_.path().string();
    host_.identity.mainWindow = mainWindow;
    host_.scratchMemory.pooled = true;
    const auto require = [&](const char* what, const CommandResult& result) {
        if (!result.ok())
            throw ModuleError(modulePath.string() + ": " + what + " " + FailureText(result));
    };
    require("global set-up", effect_.globalSetup());
    require("parameter set-up", effect_.paramsSetup());
}

std::filesystem::path DefaultModulePath() {
    constexpr char name[] = "nevrel.so";
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    std::filesystem::path module = program;
    module.replace_filename(name);
    if (std::error_code error; std::filesystem::exists(module, error)) return module;
    const std::filesystem::path installed = program.parent_path() / NEVREL_MODULE_FOLDER / name;
    return installed.lexically_normal();
}

std::string FailureText(const CommandResult& result) {
    const std::string message(result.out.return_msg,
                              strnlen(result.out.return_msg, sizeof result.out.return_msg));
    return "failed with code " + std::to_string(result.error) +
           (message.empty() ? "" : ": " + OneLine(message));
}

}  // namespace nevrel
