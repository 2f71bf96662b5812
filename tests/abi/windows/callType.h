/* Calling conventions of 32-bit Windows, for slots.h. */
#pragma once

/* The pedantic compiler would have thiscall for member functions alone. That it is a plain function here is the
 * point. */
#pragma GCC diagnostic ignored "-Wattributes"

#define ABI_MEMBER __attribute__((thiscall))
#define ABI_FACTORY __attribute__((cdecl))
#define ABI_EXPORT __attribute__((dllexport))
