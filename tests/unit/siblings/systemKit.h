// What the tests of the siblings need of the system; one body for each platform.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/wideChar.h"

namespace siblingTest {

using WideString = std::basic_string<WideChar>;

// The folder of the test program. The libraries under test stand in a folder beside it.
std::filesystem::path ProgramFolder();

// The file of the sibling library `name`, such as "ZelkBase", as it was built.
std::filesystem::path LibraryFile(const std::string& name);

// Loads the library and returns its handle, or null. It stays loaded to the end of the process.
void* LoadLibraryFile(const std::filesystem::path& file);

// The address that `library` exports under `name`, or null.
void* FindExport(void* library, const char* name);

// The handle of the sibling library `name` if it is loaded, found by its file name alone; or null.
void* FindLoadedLibrary(const std::string& name);

// Sets an environment variable of this process; an empty value takes it away.
void SetVariable(const std::string& name, const WideString& value);

// Starts the test program `name` once for each element of `arguments`, all at the same time, and waits. Returns whether
// all of them ended with 0.
bool RunPrograms(const std::string& name, const std::vector<std::vector<std::string>>& arguments);

// The machine's id, got by another way than that of the library.
WideString MachineIdOfSystem();

} // namespace siblingTest
