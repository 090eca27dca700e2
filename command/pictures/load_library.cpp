#include <dlfcn.h>

#include <stdexcept>

#include "command/files/own_files.h"
#include "command/pictures/picture_library.h"

namespace nevrel {
namespace {

int libraryThreads = 1;
const PictureLibrary* loaded = nullptr;

const PictureLibrary& Load() {
    const std::string module = OwnFile("nevrel_pictures.so").string();
    // Stays loaded: what it handed out may outlive any scope.
    void* const handle = dlopen(module.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    void* const symbol = handle == nullptr ? nullptr : dlsym(handle, librarySymbol);
    if (symbol == nullptr)
        throw std::runtime_error(std::string("the picture library cannot be loaded: ") + dlerror());
    const PictureLibrary& library = *reinterpret_cast<const PictureLibrary* (*)()>(symbol)();
    library.useThreads(libraryThreads);
    loaded = &library;
    return library;
}

}  // namespace

const PictureLibrary& TheLibrary() {
    static const PictureLibrary& library = Load();
    return library;
}

void UseThreads(int threads) {
    libraryThreads = threads;
    if (loaded != nullptr) loaded->useThreads(threads);
}

}  // namespace nevrel
