#include "fakeSibling.h"

#include <string.h>

SiblingSetUp siblingSetUp;

ABI_EXPORT void ABI_FACTORY SetUpSibling(const SiblingSetUp* setUp);
ABI_EXPORT void ABI_FACTORY SetUpSibling(const SiblingSetUp* setUp) {
    siblingSetUp = *setUp;
}

void WriteNote(const char* note) {
    siblingSetUp.write(note);
}

uint32_t FindService(const char* library, const KnownService* services, int count, const Guid* iid, void** out) {
    const GuidText id = TextOfGuid(iid);
    Note("%s.CreateZelkObject %s", library, id.text);
    for (int i = 0; i < count; ++i) {
        if (strcmp(services[i].id, id.text) == 0) {
            *out = services[i].object;
            return 0;
        }
    }
    return 0x80004002;
}

NarrowText Narrow(const Utf16* text) {
    NarrowText result;
    size_t length = 0;
    for (; *text != 0 && length + 3 < sizeof result.text; ++text) {
        if (*text == '\r' || *text == '\n') {
            result.text[length++] = '\\';
            result.text[length++] = *text == '\r' ? 'r' : 'n';
        } else {
            result.text[length++] = *text < 0x80 ? (char)*text : '?';
        }
    }
    result.text[length] = '\0';
    return result;
}
