#include "loadLibrary.h"

#include <cstdio>

#include <windows.h>

void* LoadFrom(const std::string& folder, const std::string& name) {
    const std::string file = (folder.empty() ? "" : folder + "\\") + name + ".dll";
    const HMODULE library = LoadLibraryA(file.c_str());
    if (library == nullptr) {
        std::fprintf(stderr, "smallHost: %s: error %lu\n", file.c_str(), GetLastError());
    }
    return library;
}

void* FindExport(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
