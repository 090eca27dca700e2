// Opens the options dialog of the module beside it, for someone to look at.
#include <cstdio>
#include <exception>

#include "host_kit/instance.h"
#include "host_kit/module.h"
#include "tests/ui/user.h"

using namespace host_kit;

int main() try {
    const test::User user;
    const Module module(MODULE_FILE);
    Host host;
    host.identity.pluginPath = module.path().string();
    host.identity.mainWindow = user.mainWindow();
    Effect effect(host, module.entryPoint());
    effect.globalSetup();
    effect.paramsSetup();
    return Instance(effect).doDialog().error;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
