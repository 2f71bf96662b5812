// What the host needs of the operating system. One body per platform.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

// The arguments of this process in UTF-8, without the program name. `argc` and `argv` are those of main.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// The executable of this process, and its directory.
std::filesystem::path OwnProgram();
std::filesystem::path OwnDirectory();

// The default directory of the libraries: OwnDirectory() on Windows, lib beside it elsewhere.
std::filesystem::path DefaultLibraryDirectory();

// The file name of the library `name`: "mordRev.dll", "libmordRev.so".
std::string LibraryFileName(std::string_view name);

// Loads a library. On failure returns null and writes the system's message to `reason`.
void* LoadLibraryFile(const std::filesystem::path& file, std::string& reason);

// The address that `library` exports as `name`, or null.
void* FindExport(void* library, const char* name);

// Sets an environment variable of this process.
void SetEnvironment(const std::string& name, const std::filesystem::path& value);

// The directory for temporary files, which may not exist, and the environment variable that sets it.
struct TemporaryPlace {
    std::filesystem::path path;
    std::string variable;
};
TemporaryPlace FindTemporaryPlace();

enum class Stream { input, output, error };

// Whether the stream is a terminal.
bool IsTerminal(Stream stream);

// Whether to write colours: the stream is a terminal that supports them, and the environment variable NO_COLOR is unset
// or empty. Enables colours on a terminal that needs it.
bool TakesColour(Stream stream);

// Switches the standard streams to binary mode and a console to UTF-8. Makes sure that a file that is opened later does
// not take the place of a closed standard stream: reads and writes of such a stream fail.
void PrepareStreams();

} // namespace mordhost
