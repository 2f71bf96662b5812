/* What the fake sibling libraries share: how a test sets them up, and the pieces of a service. */
#pragma once

#include "note.h"

/* The services' operations leave a note each, "IModuleFinder.FindModule …", but for those of the converter, which is
 * asked for every piece of a log record: they are counted. */
typedef struct ConverterUse {
    int addRefs;
    int releases;
    int toWide;
    int toNarrow;
    int faults; /* requests that are not as they must be; each leaves a note too */
} ConverterUse;

typedef struct SiblingSetUp {
    void(ABI_FACTORY* write)(const char* line); /* takes the notes */
    void* baseModule;                           /* what the module finder finds under "module.base" */
    const Utf16* configDirectory;               /* the answer of the log configuration; lives as long as the process */
    ConverterUse* converterUse;
} SiblingSetUp;

/* Each fake sibling exports this as "SetUpSibling", to be called before anything else. */
typedef void(ABI_FACTORY* SetUpSiblingFunction)(const SiblingSetUp* setUp);

#ifndef __cplusplus
extern SiblingSetUp siblingSetUp;

/* One service that a library knows. */
typedef struct KnownService {
    const char* id; /* as TextOfGuid gives it */
    void* object;
} KnownService;

/* The body of a factory: notes the call, and finds the service. */
uint32_t FindService(const char* library, const KnownService* services, int count, const Guid* iid, void** out);

/* The wide text in ASCII, for notes; other units become "?", carriage return and line feed are written out. */
typedef struct NarrowText {
    char text[1024];
} NarrowText;
NarrowText Narrow(const Utf16* text);

/* Release, and the two operations of Unknown that nobody calls at a service. */
#define SERVICE_UNKNOWN(Type, interfaceName)                                                                           \
    static int32_t ABI_MEMBER Type##AddRef(Type* self) {                                                               \
        (void)self;                                                                                                    \
        MustNotBeCalled(#interfaceName, 0);                                                                            \
    }                                                                                                                  \
    static int32_t ABI_MEMBER Type##Release(Type* self) {                                                              \
        (void)self;                                                                                                    \
        Note(#interfaceName ".Release");                                                                               \
        return 0;                                                                                                      \
    }                                                                                                                  \
    static uint32_t ABI_MEMBER Type##QueryInterface(Type* self, const Guid* iid, void** out) {                         \
        (void)self, (void)iid, (void)out;                                                                              \
        MustNotBeCalled(#interfaceName, 2);                                                                            \
    }
#endif
