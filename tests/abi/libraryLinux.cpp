#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

#include "abi/library.h"

namespace edge {

std::filesystem::path ProgramFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

void* LoadFile(const std::filesystem::path& file) {
    void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(EXIT_FAILURE);
    }
    return module;
}

void* FindExport(void* module, const char* name) {
    return dlsym(module, name);
}

} // namespace edge
