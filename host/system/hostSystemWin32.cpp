#include "system/hostSystem.h"

#include <cstdio>

#include <windows.h>
// After windows.h, which it needs.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include "system/streamHandleWin32.h"

namespace mordhost {

namespace {

std::string Utf8Of(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0) {
        return {};
    }
    std::string text(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
    text.resize(text.size() - 1); // without the NUL
    return text;
}

// The message of the system for an error, without its period and line end.
std::string MessageOf(DWORD code) {
    wchar_t words[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, words,
                                  static_cast<DWORD>(std::size(words)), nullptr);
    while (length > 0 && (words[length - 1] == L'\r' || words[length - 1] == L'\n' || words[length - 1] == L'.')) {
        --length;
    }
    words[length < std::size(words) ? length : 0] = L'\0';
    return length > 0 ? Utf8Of(words) : "error " + std::to_string(code);
}

} // namespace

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count); // the arguments of main are not Unicode
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(Utf8Of(words[i]));
    }
    LocalFree(words);
    return arguments;
}

std::filesystem::path OwnProgram() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size()) {
        path.resize(path.size() * 2);
    }
    path.resize(length);
    return path;
}

std::filesystem::path OwnDirectory() {
    return OwnProgram().parent_path();
}

std::filesystem::path DefaultLibraryDirectory() {
    return OwnDirectory();
}

std::string LibraryFileName(std::string_view name) {
    return std::string(name) + ".dll";
}

void* LoadLibraryFile(const std::filesystem::path& file, std::string& reason) {
    const std::filesystem::path path = std::filesystem::absolute(file);
    const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr) {
        reason = MessageOf(GetLastError());
    }
    return library;
}

void* FindExport(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void SetEnvironment(const std::string& name, const std::filesystem::path& value) {
    SetEnvironmentVariableW(std::filesystem::path(name).c_str(), value.c_str());
}

TemporaryPlace FindTemporaryPlace() {
    wchar_t path[MAX_PATH + 2] = L"";
    const DWORD length = GetTempPathW(static_cast<DWORD>(std::size(path)), path);
    path[length < std::size(path) ? length : 0] = L'\0';
    return {path, "TMP"};
}

bool IsTerminal(Stream stream) {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(stream), &mode) != 0;
}

bool TakesColour(Stream stream) {
    DWORD mode = 0;
    if (GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) > 1) { // the size counts the NUL
        return false;
    }
    return GetConsoleMode(HandleOf(stream), &mode) != 0 &&
           SetConsoleMode(HandleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

void PrepareStreams() {
    // In binary mode lines end in a line feed on every platform.
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

} // namespace mordhost
