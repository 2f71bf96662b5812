// What the host needs of the operating system; each platform has one body of these.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

// The arguments of this process in UTF-8, without the program's name. `argc` and `argv` are those of main.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// The directory of the executable of this process.
std::filesystem::path OwnDirectory();

// Where the libraries are looked for unless the user says otherwise: the own directory on Windows, lib beside it
// elsewhere.
std::filesystem::path DefaultLibraryDirectory();

// The file name of the library `name`: "mordRev.dll", "libmordRev.so".
std::string LibraryFileName(std::string_view name);

// Loads the library in the file; null with the system's words in `reason` when that fails.
void* LoadLibraryFile(const std::filesystem::path& file, std::string& reason);

// What `library` exports under `name`, or null.
void* FindExport(void* library, const char* name);

// Sets a variable in the environment of this process.
void SetEnvironment(const std::string& name, const std::filesystem::path& value);

// Where temporary files are kept, which may not be there, and the environment variable by which a user names it.
struct TemporaryPlace {
    std::filesystem::path path;
    std::string variable;
};
TemporaryPlace FindTemporaryPlace();

enum class Stream { input, output, error };

// Whether the stream is a terminal.
bool IsTerminal(Stream stream);

// Whether colours are understood and wanted: never by anything but a terminal, and never when the environment variable
// NO_COLOR is set to any text. Switches them on where that is needed.
bool TakesColour(Stream stream);

// Makes the standard streams pass bytes on as they are, and a terminal take them as UTF-8. Reading or writing one that
// is closed fails from now on: no file that is opened later takes its place.
void PrepareStreams();

} // namespace mordhost
