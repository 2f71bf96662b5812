// Shared libraries that the comparison loads at run time.
#pragma once

#include <filesystem>
#include <string>

namespace model {

// Loads the library. Throws std::runtime_error with the system's reason.
void* LoadModule(const std::filesystem::path& file);

// Unloads a library of LoadModule. Throws std::runtime_error if it stays in the process.
void UnloadModule(void* module, const std::filesystem::path& file);

// Returns the address of an export. Throws std::runtime_error if there is none.
void* SymbolOf(void* module, const char* name);

// The folder of the program.
std::filesystem::path ProgramFolder();

// "libNAME.so" or "NAME.dll".
std::string LibraryFile(const std::string& name);

// The folder of the build that holds the shipped libraries.
std::filesystem::path ProductFolder();

} // namespace model
