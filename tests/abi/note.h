/* Notes of what the fakes were called for, in the order of the calls; C and C++. */
#pragma once

#include "slots.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Where one finished note goes. Each module that holds fakes defines it: the test program keeps the text, a fake
 * sibling hands it to the test program. */
void WriteNote(const char* note);

/* Formats a note like printf, up to 4095 bytes. */
void Note(const char* format, ...) __attribute__((format(printf, 1, 2)));

/* Ends the process with a message on the standard error: a slot was called that the library has no business with. There
 * is no way back from it, since nobody knows which arguments the caller expects to be taken from the stack. */
void MustNotBeCalled(const char* interfaceName, int slot) __attribute__((noreturn));

/* The identifier as "{7219CBFF-058B-4ACE-B29D-090214DB480C}". */
typedef struct GuidText {
    char text[39];
} GuidText;
GuidText TextOfGuid(const Guid* guid);

#ifdef __cplusplus
}
#endif

/* Defines the function of a slot that must not be called, interfaceNameSlotN. */
#define RESERVED_SLOT(interfaceName, slot)                                                                             \
    static void ABI_MEMBER interfaceName##Slot##slot(void* self) {                                                     \
        (void)self;                                                                                                    \
        MustNotBeCalled(#interfaceName, slot);                                                                         \
    }
