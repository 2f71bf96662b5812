// Loading of libraries by file, for a test program that links none of them.
#pragma once

#include <filesystem>

namespace edge {

// The folder of the running program.
std::filesystem::path ProgramFolder();

// Loads a library; ends the process with a message when it cannot be loaded. It stays loaded.
void* LoadFile(const std::filesystem::path& file);

// The address of an exported name, or null.
void* FindExport(void* module, const char* name);

} // namespace edge
