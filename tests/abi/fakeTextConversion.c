#include "fakeTextConversion.h"

#include <string.h>

enum { UTF8_CODE_PAGE = 65001, OVERWRITE = 0x7E };

static uint32_t Length(const Utf16* text) {
    uint32_t length = 0;
    while (text[length] != 0) {
        ++length;
    }
    return length;
}

int ConvertToWide(const TextConversionRequest* request) {
    const unsigned char* source = request->source;
    const uint32_t length = request->sourceLength;
    if (request->codePage != UTF8_CODE_PAGE || request->reserved != 0 || length != strlen(request->source) ||
        request->destinationCapacity != 2 * length + 4) {
        return 0;
    }
    Utf16* out = request->destination;
    memset(out, OVERWRITE, request->destinationCapacity * sizeof *out);
    const unsigned char* const end = source + length;
    while (source < end) {
        if (*source < 0x80) {
            *out++ = *source++;
        } else if (*source < 0xE0) {
            *out++ = (Utf16)((source[0] & 0x1F) << 6 | (source[1] & 0x3F));
            source += 2;
        } else {
            *out++ = (Utf16)((source[0] & 0x0F) << 12 | (source[1] & 0x3F) << 6 | (source[2] & 0x3F));
            source += 3;
        }
    }
    *out = 0;
    return 1;
}

int ConvertToNarrow(const TextConversionRequest* request) {
    const Utf16* const source = request->source;
    const uint32_t length = request->sourceLength;
    if (request->codePage != UTF8_CODE_PAGE || request->reserved != 0 || length != Length(source) ||
        request->destinationCapacity != 4 * length) {
        return 0;
    }
    unsigned char* out = request->destination;
    memset(out, OVERWRITE, request->destinationCapacity);
    for (uint32_t i = 0; i < length; ++i) {
        const Utf16 unit = source[i];
        if (unit < 0x80) {
            *out++ = (unsigned char)unit;
        } else if (unit < 0x800) {
            *out++ = (unsigned char)(0xC0 | unit >> 6);
            *out++ = (unsigned char)(0x80 | (unit & 0x3F));
        } else {
            *out++ = (unsigned char)(0xE0 | unit >> 12);
            *out++ = (unsigned char)(0x80 | (unit >> 6 & 0x3F));
            *out++ = (unsigned char)(0x80 | (unit & 0x3F));
        }
    }
    *out = '\0';
    return 1;
}
