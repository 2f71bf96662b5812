#include <stdexcept>

#include <dlfcn.h>

#include "model/module.h"

namespace model {

void* LoadModule(const std::filesystem::path& file) {
    void* const module = dlopen(file.c_str(), RTLD_NOW);
    if (module == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return module;
}

void UnloadModule(void* module, const std::filesystem::path& file) {
    dlclose(module);
    if (dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr) {
        throw std::runtime_error(file.string() + " stays loaded");
    }
}

void* SymbolOf(void* module, const char* name) {
    void* const symbol = dlsym(module, name);
    if (symbol == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return symbol;
}

std::filesystem::path ProgramFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::string LibraryFile(const std::string& name) {
    return "lib" + name + ".so";
}

std::filesystem::path ProductFolder() {
    return ProgramFolder().parent_path() / "lib";
}

} // namespace model
