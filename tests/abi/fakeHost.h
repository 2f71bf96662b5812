/* A host, its records and its report sink as tables of plain functions; C and C++. Every call leaves a note. */
#pragma once

#include <stddef.h>

#include "slots.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A value of a record: text, or a number where `text` is null. */
typedef struct NamedValue {
    const char* name;
    const char* text;
    int64_t number;
} NamedValue;

typedef struct FakeRecord {
    Record record;
    const char* label; /* its name in the notes */
    const NamedValue* values;
    size_t count;
} FakeRecord;

FakeRecord MakeRecord(const char* label, const NamedValue* values, size_t count);

typedef struct FakeHost {
    Host host;
    int32_t queryCode;  /* what QueryDot returns */
    const char* answer; /* what it delivers; null delivers nothing */
    int32_t deleteCode; /* what DeleteDot returns */
    char* outstanding;  /* the answer that the library holds */
} FakeHost;

FakeHost MakeHost(const char* answer);

typedef struct FakeSink {
    Sink sink;
} FakeSink;

FakeSink MakeSink(void);

#ifdef __cplusplus
}
#endif
