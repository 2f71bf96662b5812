#include "platform/platform.h"

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

uint32_t GetLastError() {
    return ::GetLastError();
}

} // namespace platform

// The library's entry carries no logic: nothing is set up when it is loaded and nothing torn down when it goes.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
