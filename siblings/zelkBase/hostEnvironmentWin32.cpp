#include "zelkBase/hostEnvironment.h"

#include <windows.h>

namespace siblings {

namespace {

// Returns the text that `read` writes to a buffer with room for the given number of units. `read` returns the length
// without the NUL or, if the buffer is too small, the required size with it.
template <typename Read>
WideString ReadSystemText(Read read) {
    WideString text(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = read(text.data(), static_cast<DWORD>(text.size()))) >= text.size()) {
        text.resize(length + size_t{1});
    }
    text.resize(length);
    return text;
}

} // namespace

const WideChar separator = L'\\';

WideString EnvironmentText(const WideChar* name) {
    return ReadSystemText([name](wchar_t* text, DWORD room) { return GetEnvironmentVariableW(name, text, room); });
}

WideString AbsolutePath(const WideString& path) {
    return ReadSystemText(
        [&path](wchar_t* text, DWORD room) { return GetFullPathNameW(path.c_str(), room, text, nullptr); });
}

bool IsSeparator(WideChar unit) {
    return unit == L'\\' || unit == L'/';
}

} // namespace siblings
