// hold_module MODULE: loads the module where it lies, tells the flags that it promises, and
// keeps it loaded until its input ends.
#include <cstdio>

#include "host_kit/effect.h"
#include "host_kit/module.h"

using namespace host_kit;

int main(int /*count*/, char** arguments) {
    const Module module(arguments[1]);
    Host host;
    const CommandResult result = Effect(host, module.entryPoint()).globalSetup();
    std::printf("%x %x\n", static_cast<unsigned>(result.out.out_flags),
                static_cast<unsigned>(result.out.out_flags2));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return result.error;
}
