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

std::string FailureText(const CommandResult& result) {
    const std::string message(result.out.return_msg,
                              strnlen(result.out.return_msg, sizeof result.out.return_msg));
    return "failed with code " + std::to_string(result.error) +
           (message.empty() ? "" : ": " + OneLine(message));
}

}  // namespace nevrel
