// The calling conventions of the library's binary interface.
//
// - The operations of an interface are plain virtual members in the platform's default member convention. On 32-bit
//   Windows that is thiscall: the object in ECX, the arguments on the stack from right to left, removed by the callee.
//   Their declarations need no attribute.
// - A factory (`CreateZelkObject`, of this library and of its siblings) is `extern "C"` and MORD_CDECL, exported under
//   its undecorated name.
// - System functions that are called through a pointer are MORD_STDCALL. They are not part of the binary interface.
//
// Only virtual tables and plain records cross the interface: no class of the standard library, and no heap block that
// the other side has to free with its own allocator.
#pragma once

#if defined(_WIN32)
#define MORD_CDECL __cdecl
#define MORD_STDCALL __stdcall
#define MORD_EXPORT // exported by the module definition file, which also fixes the ordinal
#else
#define MORD_CDECL
#define MORD_STDCALL
#define MORD_EXPORT __attribute__((visibility("default")))
#endif
