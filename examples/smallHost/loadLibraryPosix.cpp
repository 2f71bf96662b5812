#include "loadLibrary.h"

#include <cstdio>

#include <dlfcn.h>

void* LoadFrom(const std::string& folder, const std::string& name) {
    const std::string file = (folder.empty() ? "" : folder + "/") + "lib" + name + ".so";
    void* const library = dlopen(file.c_str(), RTLD_NOW);
    if (library == nullptr) {
        std::fprintf(stderr, "smallHost: %s\n", dlerror());
    }
    return library;
}

void* FindExport(void* library, const char* name) {
    return dlsym(library, name);
}
