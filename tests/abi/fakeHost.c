#include "fakeHost.h"

#include <stdlib.h>
#include <string.h>

#include "note.h"

enum { DELIVERED = 0, BUFFER_NEEDED = 201, NO_SUCH_VALUE = 1 };

static const NamedValue* Find(const FakeRecord* record, const char* name) {
    for (size_t i = 0; i < record->count; ++i) {
        if (strcmp(record->values[i].name, name) == 0) {
            return &record->values[i];
        }
    }
    return NULL;
}

static int32_t ABI_MEMBER RecordGetInt32(Record* self, const char* name, int32_t* value) {
    const FakeRecord* const record = (const FakeRecord*)self;
    Note("%s.GetInt32 %s", record->label, name);
    const NamedValue* const found = Find(record, name);
    if (found == NULL || found->text != NULL) {
        return NO_SUCH_VALUE;
    }
    *value = (int32_t)found->number;
    return DELIVERED;
}

static int32_t ABI_MEMBER RecordGetInt64(Record* self, const char* name, int64_t* value) {
    const FakeRecord* const record = (const FakeRecord*)self;
    Note("%s.GetInt64 %s, preset to %ld", record->label, name, (long)*value);
    const NamedValue* const found = Find(record, name);
    if (found == NULL || found->text != NULL) {
        return NO_SUCH_VALUE;
    }
    *value = found->number;
    return DELIVERED;
}

static int32_t ABI_MEMBER RecordGetString(Record* self, const char* name, char* buffer, int32_t* size) {
    const FakeRecord* const record = (const FakeRecord*)self;
    Note("%s.GetString %s, %s, size %ld", record->label, name, buffer == NULL ? "no buffer" : "buffer", (long)*size);
    const NamedValue* const found = Find(record, name);
    if (found == NULL || found->text == NULL) {
        return NO_SUCH_VALUE;
    }
    const size_t needed = strlen(found->text) + 1;
    if (buffer == NULL || *size < (int32_t)needed) {
        *size = (int32_t)needed;
        return BUFFER_NEEDED;
    }
    memcpy(buffer, found->text, needed);
    return DELIVERED;
}

RESERVED_SLOT(IEventRecord, 0)
RESERVED_SLOT(IEventRecord, 1)
RESERVED_SLOT(IEventRecord, 2)
RESERVED_SLOT(IEventRecord, 3)
RESERVED_SLOT(IEventRecord, 4)
RESERVED_SLOT(IEventRecord, 5)
RESERVED_SLOT(IEventRecord, 6)
RESERVED_SLOT(IEventRecord, 9)
RESERVED_SLOT(IEventRecord, 11)
RESERVED_SLOT(IEventRecord, 12)
RESERVED_SLOT(IEventRecord, 13)
RESERVED_SLOT(IEventRecord, 14)

FakeRecord MakeRecord(const char* label, const NamedValue* values, size_t count) {
    static const RecordSlots slots = {
        {IEventRecordSlot0, IEventRecordSlot1, IEventRecordSlot2, IEventRecordSlot3, IEventRecordSlot4,
         IEventRecordSlot5, IEventRecordSlot6},
        RecordGetInt32,
        RecordGetInt64,
        IEventRecordSlot9,
        RecordGetString,
        {IEventRecordSlot11, IEventRecordSlot12, IEventRecordSlot13, IEventRecordSlot14},
    };
    const FakeRecord record = {{&slots}, label, values, count};
    return record;
}

static int32_t ABI_MEMBER HostDeleteDot(Host* self, const char* guid, const char* mid, int32_t kind, const char* type) {
    Note("host.DeleteDot %s, %s, %ld, %s", guid, mid, (long)kind, type);
    return ((FakeHost*)self)->deleteCode;
}

static int32_t ABI_MEMBER HostQueryDot(Host* self, const char* guidJson, const char* mid, char** result) {
    FakeHost* const host = (FakeHost*)self;
    Note("host.QueryDot %s, %s, %s", guidJson, mid, *result == NULL ? "null" : "not null");
    if (host->answer != NULL) {
        const size_t size = strlen(host->answer) + 1;
        host->outstanding = malloc(size);
        memcpy(host->outstanding, host->answer, size);
        *result = host->outstanding;
    }
    return host->queryCode;
}

static int32_t ABI_MEMBER HostFreeResult(Host* self, char* result) {
    FakeHost* const host = (FakeHost*)self;
    if (result != host->outstanding) {
        Note("host.FreeResult of what the host never gave");
        return 1;
    }
    Note(result == NULL ? "host.FreeResult null" : "host.FreeResult the answer");
    free(result);
    host->outstanding = NULL;
    return 0;
}

RESERVED_SLOT(IDotHost, 0)
RESERVED_SLOT(IDotHost, 1)
RESERVED_SLOT(IDotHost, 5)
RESERVED_SLOT(IDotHost, 6)
RESERVED_SLOT(IDotHost, 7)
RESERVED_SLOT(IDotHost, 8)

FakeHost MakeHost(const char* answer) {
    static const HostSlots slots = {
        {IDotHostSlot0, IDotHostSlot1},
        HostDeleteDot,
        HostQueryDot,
        HostFreeResult,
        {IDotHostSlot5, IDotHostSlot6, IDotHostSlot7, IDotHostSlot8},
    };
    const FakeHost host = {{&slots}, 0, answer, 0, NULL};
    return host;
}

static int32_t ABI_MEMBER SinkReport(Sink* self, int32_t kind, const char* text, uint32_t size) {
    (void)self;
    Note("sink.Report %ld, %s, size %s", (long)kind, text, size == strlen(text) ? "that of the text" : "wrong");
    return 0;
}

RESERVED_SLOT(IReportSink, 1)
RESERVED_SLOT(IReportSink, 2)
RESERVED_SLOT(IReportSink, 3)
RESERVED_SLOT(IReportSink, 4)

FakeSink MakeSink(void) {
    static const SinkSlots slots = {SinkReport,
                                    {IReportSinkSlot1, IReportSinkSlot2, IReportSinkSlot3, IReportSinkSlot4}};
    const FakeSink sink = {{&slots}};
    return sink;
}
