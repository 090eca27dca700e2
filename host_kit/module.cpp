#include "host_kit/module.h"

#include <string>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace host_kit {
namespace {

constexpr char entryPointName[] = "EntryPointFunc";

#ifdef _WIN32

void* OpenLibrary(const std::filesystem::path& path) {
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

std::string OpenLibraryError() {
    const DWORD code = GetLastError();
    if (code == ERROR_BAD_EXE_FORMAT) return "not a 64-bit Windows module";
    return "cannot be loaded (Windows error " + std::to_string(code) + ")";
}

void* FindExport(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void CloseLibrary(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

#else

void* OpenLibrary(const std::filesystem::path& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

std::string OpenLibraryError() {
    const char* text = dlerror();
    return std::string("cannot be loaded (") + (text == nullptr ? "no reason given" : text) + ")";
}

void* FindExport(void* library, const char* name) { return dlsym(library, name); }

void CloseLibrary(void* library) { dlclose(library); }

#endif

std::string Complaint(const std::filesystem::path& path, const std::string& reason) {
    return path.string() + ": " + reason;
}

}  // namespace

Module::Module(const std::filesystem::path& path) : path_(std::filesystem::absolute(path)) {
    std::error_code error;
    if (!std::filesystem::exists(path_, error))
        throw ModuleError(Complaint(path, "no such module"));
    if (std::filesystem::is_directory(path_, error))
        throw ModuleError(Complaint(path, "is a folder, not a module"));
    library_ = OpenLibrary(path_);
    if (library_ == nullptr) throw ModuleError(Complaint(path, OpenLibraryError()));
    entryPoint_ = reinterpret_cast<PF_EntryPoint>(FindExport(library_, entryPointName));
    if (entryPoint_ == nullptr) {
        CloseLibrary(library_);
        throw ModuleError(
            Complaint(path, std::string("is no effect module: it exports no ") + entryPointName));
    }
}

Module::~Module() {
    if (library_ != nullptr) CloseLibrary(library_);
}

Module::Module(Module&& other) noexcept
    : path_(std::move(other.path_)),
      library_(std::exchange(other.library_, nullptr)),
      entryPoint_(std::exchange(other.entryPoint_, nullptr)) {}

Module& Module::operator=(Module&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(library_, other.library_);
    std::swap(entryPoint_, other.entryPoint_);
    return *this;
}

}  // namespace host_kit
