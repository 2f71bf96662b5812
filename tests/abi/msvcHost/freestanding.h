// What programs in the Microsoft ABI need of the system, without the headers and the runtime of a kit.
#pragma once

#include <stddef.h>
#include <stdint.h>

extern "C" {
__declspec(dllimport) __declspec(noreturn) void __stdcall ExitProcess(uint32_t code);
__declspec(dllimport) uint32_t __stdcall GetModuleFileNameW(void* module, wchar_t* path, uint32_t size);
__declspec(dllimport) void* __stdcall GetModuleHandleW(const wchar_t* name);
__declspec(dllimport) void* __stdcall GetProcAddress(void* module, const char* name);
__declspec(dllimport) void* __stdcall LoadLibraryW(const wchar_t* name);

void* memcpy(void* to, const void* from, size_t size);
void* memset(void* to, int byte, size_t size);
size_t strlen(const char* text);
}

// Writes to the standard output, at once.
void Print(const char* text);
void Print(const wchar_t* text); // ASCII; other characters come out as "?"
void Print(uint32_t number);
void Print(int32_t number) = delete;
void Print(bool value);

// Writes its arguments one after the other, and the end of the line.
template <typename... Pieces>
void PrintLine(Pieces... pieces) {
    (Print(pieces), ...);
    Print("\n");
}

bool SameText(const char* left, const char* right);
bool SameText(const wchar_t* left, const wchar_t* right);

// The folder of the running program with its last separator, and `name` behind it. Valid until the next call.
const wchar_t* BesideTheProgram(const wchar_t* name);
