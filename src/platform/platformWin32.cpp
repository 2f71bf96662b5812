#define _CRT_RAND_S // declares rand_s, which draws from the system // NOLINT(bugprone-reserved-identifier)
#include "platform/platform.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include <windows.h>

namespace platform {

ModuleHandle GetModuleHandleW(const WideChar* name) {
    return ::GetModuleHandleW(name);
}

void* GetProcAddress(ModuleHandle module, const char* name) {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(module), name));
}

uint32_t GetPrivateProfileIntW(const WideChar* section, const WideChar* key, int32_t defaultValue,
                               const WideChar* path) {
    return ::GetPrivateProfileIntW(section, key, defaultValue, path);
}

void OutputDebugStringW(const WideChar* text) {
    ::OutputDebugStringW(text);
}

void WriteStandardOutput(const WideChar* text) {
    std::wcout << text << std::flush;
    std::wcout.clear();
}

uint32_t GetCurrentThreadId() {
    return ::GetCurrentThreadId();
}

bool FillRandom(void* buffer, size_t size) {
    auto* at = static_cast<char*>(buffer);
    while (size != 0) {
        unsigned number = 0;
        if (rand_s(&number) != 0) {
            return false;
        }
        const size_t length = std::min(size, sizeof number);
        std::memcpy(at, &number, length);
        at += length;
        size -= length;
    }
    return true;
}

uint32_t GetLastError() {
    return ::GetLastError();
}

} // namespace platform

// The entry point does nothing: the library sets nothing up when it is loaded and runs only its static destructors when
// it is unloaded.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
