#include "system/hostSystem.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <dlfcn.h>
#include <ext/stdio_filebuf.h>
#include <fcntl.h>
#include <unistd.h>

#include "system/streamDescriptorPosix.h"

namespace mordhost {

namespace {

std::string EnvironmentText(const char* name) {
    const char* const text = getenv(name);
    return text == nullptr ? "" : text;
}

} // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

std::filesystem::path OwnProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path OwnDirectory() {
    return OwnProgram().parent_path();
}

std::filesystem::path DefaultLibraryDirectory() {
    return OwnDirectory().parent_path() / "lib";
}

std::string LibraryFileName(std::string_view name) {
    return "lib" + std::string(name) + ".so";
}

void* LoadLibraryFile(const std::filesystem::path& file, std::string& reason) {
    // With a separator the name is a path: dlopen searches no other directory.
    void* const library = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        reason = dlerror();
    }
    return library;
}

void* FindExport(void* library, const char* name) {
    return dlsym(library, name);
}

void SetEnvironment(const std::string& name, const std::filesystem::path& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

TemporaryPlace FindTemporaryPlace() {
    const std::string named = EnvironmentText("TMPDIR");
    return {named.empty() ? "/tmp" : named, "TMPDIR"};
}

bool IsTerminal(Stream stream) {
    return isatty(DescriptorOf(stream)) == 1;
}

bool TakesColour(Stream stream) {
    const std::string kind = EnvironmentText("TERM");
    return IsTerminal(stream) && !kind.empty() && kind != "dumb" && EnvironmentText("NO_COLOR").empty();
}

void PrepareStreams() {
    // A closed stream gets the null device in the wrong mode, so that its use fails. Otherwise the next file that is
    // opened would receive what is written to the stream.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF) {
            open("/dev/null",
                 stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // takes the lowest free descriptor, which is this one
        }
    }
    // The default buffer holds a few dozen rows. The system calls for so few rows double the time per row.
    constexpr size_t bufferSize = 65536;
    static auto* const buffer = new __gnu_cxx::stdio_filebuf<char>(stdout, std::ios::out, bufferSize);
    std::cout.rdbuf(buffer); // never destroyed, because the stream is flushed last
}

} // namespace mordhost
