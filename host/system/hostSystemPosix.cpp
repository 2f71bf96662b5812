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

std::filesystem::path OwnDirectory() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

std::filesystem::path DefaultLibraryDirectory() {
    return OwnDirectory().parent_path() / "lib";
}

std::string LibraryFileName(std::string_view name) {
    return "lib" + std::string(name) + ".so";
}

void* LoadLibraryFile(const std::filesystem::path& file, std::string& reason) {
    // With a separator in it the name is a path, and nothing else is searched.
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
    // Bytes pass as they are from the start. A closed stream gets the null device, opened so that what the stream is
    // for fails; otherwise the next file to be opened would get what is written to the stream.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF) {
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // the lowest that is free: this one
        }
    }
    // The usual buffer holds a few dozen rows, and the system takes twice as long for each of so few.
    constexpr size_t bufferSize = 65536;
    static auto* const buffer = new __gnu_cxx::stdio_filebuf<char>(stdout, std::ios::out, bufferSize);
    std::cout.rdbuf(buffer); // never destroyed: the stream is flushed behind all else
}

} // namespace mordhost
