// Wide text: UTF-16 code units on every platform.
//
// The records and tables of the binary interface carry UTF-16. On Windows that is wchar_t, which the system calls take;
// elsewhere wchar_t has 32 bits, and char16_t is used instead.
#pragma once

#include <stdint.h>

#if defined(_WIN32)
typedef wchar_t WideChar;
#define WIDE(literal) L##literal
#else
typedef char16_t WideChar;
#define WIDE(literal) u##literal
#endif

static_assert(sizeof(WideChar) == 2, "a wide character is one UTF-16 code unit");
