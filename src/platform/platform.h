// What the code needs of the operating system, under the system's own names.
//
// Each platform has one body of these (platformWin32.cpp, platformPosix.cpp); what a function must do stands here.
// All of them may be called from any thread.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wideChar.h"

namespace platform {

// A loaded library. Not counted: whoever loaded it keeps it loaded.
using ModuleHandle = void*;

// The library with the file name `name`, such as "ZelkBase.dll", if it is loaded already; null otherwise. Loads
// nothing. Elsewhere than on Windows "ZelkBase.dll" stands for "libZelkBase.so".
ModuleHandle GetModuleHandleW(const WideChar* name);

// The address that `module` itself exports under the narrow, undecorated `name`, or null: what a library exports that
// `module` depends on does not count. Null for a null `module`.
void* GetProcAddress(ModuleHandle module, const char* name);

// The integer under `key` in `section` of the ini file at `path`, or `defaultValue` when file, section or key is
// missing or the value is empty. Section and key are told apart without regard to case. A value is the number at
// its start, behind blanks: an optional sign and decimal digits, or "0x" and hexadecimal ones. Any other value is 0.
uint32_t GetPrivateProfileIntW(const WideChar* section, const WideChar* key, int32_t defaultValue,
                               const WideChar* path);

// Writes `text` to the system's debug output; elsewhere than on Windows, to the standard error as UTF-8.
// Throws nothing.
void OutputDebugStringW(const WideChar* text);

// Writes `text` to the standard wide output stream, and leaves the stream ready for more. Throws nothing.
void WriteStandardOutput(const WideChar* text);

// A number that is stable for the calling thread and differs between the threads that run.
uint32_t GetCurrentThreadId();

// Fills `size` bytes at `buffer` from the system's source of randomness. Returns false when the source fails; the
// content of the buffer is unspecified then. Waits at most until the system has gathered enough to start the source.
// Throws nothing.
bool FillRandom(void* buffer, size_t size);

// The reason of this thread's last failed call: a Windows error code, or errno.
uint32_t GetLastError();

} // namespace platform
