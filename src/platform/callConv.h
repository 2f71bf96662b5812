// The calling conventions of the library's edge, told once.
//
// - The operations of an interface are plain virtual members in the platform's default member convention. On
//   32-bit Windows that is thiscall: the object in ECX, arguments on the stack from right to left, removed by the
//   callee. Nothing is written at the operations for it.
// - A factory (`CreateZelkObject`, of this library and of its siblings) is `extern "C"` with MORD_CDECL and is
//   exported under its undecorated name.
// - Functions of the system that are called by address take MORD_STDCALL. They do not cross the edge.
//
// Only tables of virtual operations and plain records cross the edge: no class of the standard library, no heap block
// that the other side would have to free by itself.
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
