#include "system/hostSystem.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace mordhost {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void NoteInterruption(int) {
    interrupted = 1;
}

std::error_code LastError() {
    return {errno, std::generic_category()};
}

std::string EnvironmentText(const char* name) {
    const char* const text = getenv(name);
    return text == nullptr ? "" : text;
}

std::error_code WriteAndSync(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            return LastError();
        }
        text.remove_prefix(static_cast<size_t>(written));
    }
    return fsync(file) == 0 ? std::error_code() : LastError();
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

void LetGoOfFiles(void*) {} // a directory goes with the names in it, whoever has the files open

void SetEnvironment(const std::string& name, const std::filesystem::path& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void HoldInterruption() {
    struct sigaction action {};
    action.sa_handler = NoteInterruption;
    action.sa_flags = static_cast<int>(SA_RESETHAND); // and not SA_RESTART: a read is to end
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool Interrupted() {
    return interrupted != 0;
}

bool IsTerminal(Stream stream) {
    return isatty(stream == Stream::output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

bool TakesColour(Stream stream) {
    const std::string kind = EnvironmentText("TERM");
    return IsTerminal(stream) && !kind.empty() && kind != "dumb" && EnvironmentText("NO_COLOR").empty();
}

void PrepareStreams() {} // they are so from the start

std::error_code WriteDurably(const std::filesystem::path& path, std::string_view text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) {
        return LastError();
    }
    std::error_code error = WriteAndSync(file, text);
    if (close(file) != 0 && !error) {
        error = LastError();
    }
    return error;
}

void SyncDirectoryOf(const std::filesystem::path& path) {
    const std::filesystem::path directory = path.has_parent_path() ? path.parent_path() : ".";
    const int handle = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        fsync(handle); // without it the old file could stand there again after a power cut, still whole
        close(handle);
    }
}

} // namespace mordhost
