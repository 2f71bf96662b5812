#include <cstdio>
#include <cstdlib>

#include <windows.h>

#include "abi/library.h"

namespace edge {

std::filesystem::path ProgramFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path();
}

void* LoadFile(const std::filesystem::path& file) {
    const HMODULE module = LoadLibraryW(file.c_str());
    if (module == nullptr) {
        std::fprintf(stderr, "%s cannot be loaded: error %lu\n", file.string().c_str(), GetLastError());
        std::exit(EXIT_FAILURE);
    }
    return module;
}

void* FindExport(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

} // namespace edge
