// A process in which the two values that are chosen once, the language and the layout of the
// controls, are used for the first time on several threads at once. Arguments: the module's path,
// as the host tells it, and the language option. Ends with 0 when every thread saw the right ones,
// otherwise with a status that no shell gives on its own.
#include <cstdio>
#include <string_view>
#include <thread>

#include "host_kit/frame.h"
#include "module/entry_point.h"
#include "params/string_table.h"
#include "tests/module/start_line.h"

using namespace host_kit;

namespace {

constexpr int kThreads = 8;
enum Status { kWrongCall = 101, kFailedSetUp, kWrongValue, kComplaint };
enum ControlId : A_long { kKeyEnable = 3, kKeyColor = 4 };

void FillRed(World& world) {
    for (A_long x = 0; x < world.width(); ++x) world.row<PF_Pixel>(0)[x] = {255, 200, 0, 0};
}

/// Whether a red picture is keyed away, which asks for the right layout.
bool RendersRight(Instance& instance, bool smart) {
    World input(PF_PixelFormat_ARGB32, 4, 1), output(PF_PixelFormat_ARGB32, 4, 1);
    FillRed(input);
    FillRed(output);
    const CommandResult result =
        smart ? SmartRender(instance, input, output) : instance.render(input, output);
    return result.ok() && output.row<PF_Pixel>(0)[3].alpha == 0;
}

bool SpeaksRight(bool japanese) {
    const std::string_view english = "Settings (Valid from next start-up)";
    return (LookupString(TextId::Settings) != english) == japanese;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return kWrongCall;
    const bool japanese = std::string_view(argv[3]) == "JP";
    Host host;
    host.identity.pluginPath = argv[1];
    Effect effect(host, EntryPointFunc);
    if (!effect.paramsSetup().ok()) return kFailedSetUp;
    Instance instance(effect);
    instance.setCheckbox(kKeyEnable, true);
    instance.setColor(kKeyColor, {255, 200, 0, 0});

    StartLine start(kThreads);
    bool right[kThreads] = {};
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                start.arriveAndWait();
                const bool languageFirst = i % 4 > 1 && SpeaksRight(japanese);
                right[i] = RendersRight(instance, i % 2 == 0) && instance.updateParamsUi().ok() &&
                           SpeaksRight(japanese) && languageFirst == (i % 4 > 1);
            });
        }
    }
    for (const bool r : right) {
        if (!r) return kWrongValue;
    }
    return host.accounts.complaints().empty() ? 0 : kComplaint;
}
