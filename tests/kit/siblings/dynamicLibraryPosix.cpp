#include "kit/siblings/dynamicLibrary.h"

#include <stdexcept>

#include <dlfcn.h>

namespace kit {

DynamicLibrary::DynamicLibrary(const std::filesystem::path& file) : m_handle(dlopen(file.c_str(), RTLD_NOW)) {
    if (m_handle == nullptr) {
        throw std::runtime_error(dlerror());
    }
}

void DynamicLibrary::Close() {
    if (m_handle != nullptr) {
        dlclose(std::exchange(m_handle, nullptr));
    }
}

void* DynamicLibrary::Symbol(const char* name) const {
    return dlsym(m_handle, name);
}

void* FindLoadedLibrary(const std::filesystem::path& file) {
    void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) {
        dlclose(library);
    }
    return library;
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

} // namespace kit
