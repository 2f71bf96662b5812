#include "zelkBase/ownLibrary.h"

#include <climits>
#include <cstring>

#include <dlfcn.h>

namespace siblings {

namespace {

// Returns the name that the library was loaded with, or null.
const char* LoadedName() {
    Dl_info info{};
    return dladdr(reinterpret_cast<void*>(&OwnModule), &info) != 0 ? info.dli_fname : nullptr;
}

} // namespace

void* OwnModule() {
    const char* const name = LoadedName();
    void* const module = name == nullptr ? nullptr : dlopen(name, RTLD_NOLOAD | RTLD_LAZY);
    if (module != nullptr) {
        dlclose(module); // valid as long as the host keeps the library loaded
    }
    return module;
}

WideString OwnDirectory() {
    void* const module = OwnModule();
    if (module == nullptr) {
        return {};
    }
    // The loader determined the directory when it loaded the library, so it is correct after a relative load and a
    // change of the working directory. The interface takes no buffer size: the result is at most a working directory
    // plus the name.
    std::string origin(PATH_MAX + std::strlen(LoadedName()) + 1, '\0');
    return dlinfo(module, RTLD_DI_ORIGIN, origin.data()) == 0 ? ToWide(origin.c_str()) : WideString();
}

} // namespace siblings
