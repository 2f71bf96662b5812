// Libraries that a test loads at run time.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace kit {

// A library that stays loaded as long as the object, or until Close.
class DynamicLibrary {
public:
    DynamicLibrary() = default;
    ~DynamicLibrary() { Close(); }
    DynamicLibrary(DynamicLibrary&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    DynamicLibrary& operator=(DynamicLibrary&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }

    // Throws std::runtime_error with the system's reason.
    explicit DynamicLibrary(const std::filesystem::path& file);

    void Close();
    void* Handle() const { return m_handle; }

    // The address of an export, or null.
    void* Symbol(const char* name) const;

private:
    void* m_handle = nullptr;
};

// The handle of the loaded library with this path or file name, or null. Does not change its reference count.
void* FindLoadedLibrary(const std::filesystem::path& file);

// The folder of the test program.
std::filesystem::path ProgramFolder();

// "libNAME.so" or "NAME.dll".
std::string LibraryFile(const std::string& name);

// Where the build puts the libraries of the product: what tests of the shipped files load.
std::filesystem::path ProductFolder();

} // namespace kit
