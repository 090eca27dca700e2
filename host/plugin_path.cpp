#include "host/plugin_path.h"

#include <array>
#include <cassert>

namespace {

/// Empty when the host does not tell.
SystemText PathFromHost(const PF_InData* inData) {
    std::array<char, PF_MAX_PATH_LEN> path{};
    if (inData->utils->get_platform_data(inData->effect_ref, PF_PlatData_RES_FILE_PATH,
                                         path.data()) != PF_Err_NONE) {
        return {};
    }
    path.back() = '\0';  // which a host that fills it all leaves out
    return FromSystemCodePage(path.data());
}

/// Whether there is no such folder. '?' stands for what a code page does not hold, and in no name.
bool LeadsNowhere(const SystemText& path) {
    const SystemText folder = path.substr(0, path.find_last_of(TEXT("/\\")) + 1);
    return path.empty() || path.find(TEXT('?')) != SystemText::npos ||
           (!folder.empty() && GetFileAttributes(folder.c_str()) == INVALID_FILE_ATTRIBUTES);
}

HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleEx(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCTSTR>(&OwnModule), &module);
    return module;
}

SystemText PathFromSystem() {
    std::array<TCHAR, PF_MAX_PATH_LEN> path{};
    const DWORD length =
        GetModuleFileName(OwnModule(), path.data(), static_cast<DWORD>(path.size()));
    return length < path.size() ? SystemText(path.data(), length) : SystemText();
}

}  // namespace

SystemText PluginPath(const PF_InData* inData) {
    assert(inData != nullptr && inData->utils != nullptr);
    const SystemText path = PathFromHost(inData);
    return LeadsNowhere(path) ? PathFromSystem() : path;
}

HMODULE PluginModule(const PF_InData* inData) {
    const SystemText path = PluginPath(inData);
    HMODULE module = path.empty() ? nullptr : GetModuleHandle(path.c_str());
    return module != nullptr ? module : OwnModule();
}
