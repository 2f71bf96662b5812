#include "host/environment.h"

#include <filesystem>

#include <windows.h>

#include "document/filePath.h"

namespace mordhostTest {

std::string EnvironmentText(const char* name) {
    wchar_t text[1024];
    const DWORD length = GetEnvironmentVariableW(std::filesystem::path(name).c_str(), text, 1024);
    return length == 0 || length >= 1024 ? std::string() : mordhost::Utf8Of(std::filesystem::path(text));
}

} // namespace mordhostTest
