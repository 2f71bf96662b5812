#include "zelkBase/ownLibrary.h"

#include <windows.h>

namespace siblings {

void* OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&OwnModule), &module);
    return module;
}

WideString OwnDirectory() {
    // A name that does not fit is truncated and fills the buffer: only a shorter one is complete.
    WideString path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(static_cast<HMODULE>(OwnModule()), path.data(),
                                        static_cast<DWORD>(path.size()))) == path.size()) {
        path.resize(path.size() * 2);
    }
    path.resize(length);
    const size_t separator = path.find_last_of(L"\\/");
    return separator == WideString::npos ? WideString() : path.substr(0, separator + 1);
}

} // namespace siblings
