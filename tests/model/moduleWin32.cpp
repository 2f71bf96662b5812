#include <array>
#include <stdexcept>

#include <windows.h>

#include "model/module.h"

namespace model {
namespace {

std::runtime_error Failure(const std::string& what) {
    return std::runtime_error(what + ": error " + std::to_string(::GetLastError()));
}

} // namespace

void* LoadModule(const std::filesystem::path& file) {
    void* const module = ::LoadLibraryW(file.c_str());
    if (module == nullptr) {
        throw Failure(file.string());
    }
    return module;
}

void UnloadModule(void* module, const std::filesystem::path& file) {
    ::FreeLibrary(static_cast<HMODULE>(module));
    if (::GetModuleHandleW(file.c_str()) != nullptr) {
        throw std::runtime_error(file.string() + " stays loaded");
    }
}

void* SymbolOf(void* module, const char* name) {
    void* const symbol = reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(module), name));
    if (symbol == nullptr) {
        throw Failure(name);
    }
    return symbol;
}

std::filesystem::path ProgramFolder() {
    std::array<wchar_t, 32768> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return std::filesystem::path(path.data()).parent_path();
}

std::string LibraryFile(const std::string& name) {
    return name + ".dll";
}

std::filesystem::path ProductFolder() {
    return ProgramFolder().parent_path() / "bin";
}

} // namespace model
