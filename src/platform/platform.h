// The operating system services that the library uses, under the system's own names.
//
// Each platform implements them in one file (platformWin32.cpp, platformPosix.cpp). Any thread may call them. None
// logs. Pointers must not be null unless the contract says so. On Linux those that build a file name can throw
// std::bad_alloc; where the contract says "throws nothing", no platform throws.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wideChar.h"

namespace platform {

// A loaded library. The handle holds no reference: it is valid as long as someone else keeps the library loaded.
using ModuleHandle = void*;

// Returns the library with the file name `name`, such as "ZelkBase.dll", if the process has loaded it already; null
// otherwise. Loads nothing. On Linux "ZelkBase.dll" means "libZelkBase.so"; a name without ".dll" is used unchanged.
ModuleHandle GetModuleHandleW(const WideChar* name);

// Returns the address that `module` itself exports under the undecorated `name`, or null. An export of a library that
// `module` depends on does not count. A null `module` gives null.
void* GetProcAddress(ModuleHandle module, const char* name);

// Reads the integer under `key` in `section` of the ini file at `path`. Returns `defaultValue` if the file, the section
// or the key is missing or the value is empty. Section and key names ignore case. The value is the number at the start
// of the text, after blanks: an optional sign and decimal digits, or "0x" and hexadecimal digits. Any other text is 0.
uint32_t GetPrivateProfileIntW(const WideChar* section, const WideChar* key, int32_t defaultValue,
                               const WideChar* path);

// Writes `text`, NUL-terminated, to the system's debug output; on Linux to the standard error, as UTF-8. Throws
// nothing.
void OutputDebugStringW(const WideChar* text);

// Writes `text`, NUL-terminated, to std::wcout, flushes it and clears its error state. Throws nothing.
void WriteStandardOutput(const WideChar* text);

// Returns the id of the calling thread: constant for the thread, and different from that of every other running thread.
uint32_t GetCurrentThreadId();

// Fills `size` bytes at `buffer` from the system's random source. Returns false if the source fails; the content of the
// buffer is then unspecified. Blocks at most until the system has seeded the source. Throws nothing.
bool FillRandom(void* buffer, size_t size);

// Returns the error of this thread's last failed system call: a Windows error code, or errno.
uint32_t GetLastError();

} // namespace platform
