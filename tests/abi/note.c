#include "note.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>

enum { EXIT_RESERVED_SLOT = 70 };

void Note(const char* format, ...) {
    char note[4096];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(note, sizeof note, format, arguments);
    va_end(arguments);
    WriteNote(note);
}

void MustNotBeCalled(const char* interfaceName, int slot) {
    fprintf(stderr, "must not be called: slot %d of %s\n", slot, interfaceName);
    fflush(NULL);
    _Exit(EXIT_RESERVED_SLOT);
}

GuidText TextOfGuid(const Guid* guid) {
    GuidText result;
    const uint8_t* const d = guid->data4;
    snprintf(result.text, sizeof result.text, "{%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
             (unsigned long)guid->data1, guid->data2, guid->data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
    return result;
}
