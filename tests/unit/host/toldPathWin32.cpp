#include <algorithm>

#include <windows.h>

#include "system/filePath.h"
#include "unit/host/toldPath.h"

namespace mordhostTest {

namespace {

// Wine before 10 does not reveal the path of a process of the other width.
bool TellsOtherWidth() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return GetProcAddress(ntdll, "wine_get_version") == nullptr ||
           GetProcAddress(ntdll, "NtWow64QueryInformationProcess64") != nullptr;
}

} // namespace

std::string ToldPath(const std::filesystem::path& file) {
    const bool sameWidth = file.stem() == (sizeof(void*) == 8 ? "waiter64" : "waiter32");
    if (!sameWidth && !TellsOtherWidth()) {
        return {};
    }
    std::string path = mordhost::Utf8Of(std::filesystem::absolute(file).make_preferred());
    std::transform(path.begin(), path.end(), path.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return path;
}

} // namespace mordhostTest
