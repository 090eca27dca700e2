#include "host/plugin_path.h"

#include <algorithm>
#include <array>
#include <cassert>

std::string PluginPath(const PF_InData* inData) {
    assert(inData != nullptr && inData->utils != nullptr);
    std::array<char, PF_MAX_PATH_LEN> path{};
    if (inData->utils->get_platform_data(inData->effect_ref, PF_PlatData_RES_FILE_PATH,
                                         path.data()) != PF_Err_NONE) {
        return {};
    }
    return {path.begin(), std::find(path.begin(), path.end(),
                                    '\0')};  // which a host that fills it all leaves out
}
