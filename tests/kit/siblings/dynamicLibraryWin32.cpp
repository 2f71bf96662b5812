#include "kit/siblings/dynamicLibrary.h"

#include <array>
#include <stdexcept>

#include <windows.h>

namespace kit {

DynamicLibrary::DynamicLibrary(const std::filesystem::path& file) : m_handle(::LoadLibraryW(file.c_str())) {
    if (m_handle == nullptr) {
        throw std::runtime_error(file.string() + ": error " + std::to_string(::GetLastError()));
    }
}

void DynamicLibrary::Close() {
    if (m_handle != nullptr) {
        ::FreeLibrary(static_cast<HMODULE>(std::exchange(m_handle, nullptr)));
    }
}

void* DynamicLibrary::Symbol(const char* name) const {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

void* FindLoadedLibrary(const std::filesystem::path& file) {
    return ::GetModuleHandleW(file.c_str());
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

} // namespace kit
