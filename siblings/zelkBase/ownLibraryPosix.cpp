#include "zelkBase/ownLibrary.h"

#include <climits>
#include <cstring>

#include <dlfcn.h>

namespace siblings {

namespace {

// The name that the library was loaded by, or null.
const char* LoadedName() {
    Dl_info info{};
    return dladdr(reinterpret_cast<void*>(&OwnModule), &info) != 0 ? info.dli_fname : nullptr;
}

} // namespace

void* OwnModule() {
    const char* const name = LoadedName();
    void* const module = name == nullptr ? nullptr : dlopen(name, RTLD_NOLOAD | RTLD_LAZY);
    if (module != nullptr) {
        dlclose(module); // the handle stays good for as long as the host keeps the library
    }
    return module;
}

WideString OwnDirectory() {
    void* const module = OwnModule();
    if (module == nullptr) {
        return {};
    }
    // The loader settled the directory when it loaded the library, so that it holds also after a relative name and a
    // change of the working directory. It gives no bound: a working directory and the name are what it is made of.
    std::string origin(PATH_MAX + std::strlen(LoadedName()) + 1, '\0');
    return dlinfo(module, RTLD_DI_ORIGIN, origin.data()) == 0 ? ToWide(origin.c_str()) : WideString();
}

} // namespace siblings
