/* The library's edge as a host in C sees it: each interface a table of function pointers, declared here a second time.
 *
 * This file shares nothing with the library's own headers, so that a slot which moves there, an argument that changes
 * its place or a record that changes its size is seen by the tests. It serves C and C++.
 */
#pragma once

#include <stdint.h>

#include "callType.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef uint16_t Utf16; /* one code unit */

typedef struct Guid {
    uint32_t data1;
    uint16_t data2;
    uint16_t data3;
    uint8_t data4[8];
} Guid;

typedef uint32_t(ABI_FACTORY* Factory)(const Guid* iid, void** out);

/* A slot that nobody calls. */
typedef void(ABI_MEMBER* ReservedSlot)(void* self);

/* The operations of Unknown, with which the tables of all components and services begin. */
#define UNKNOWN_SLOTS(Self)                                                                                            \
    int32_t(ABI_MEMBER* AddRef)(Self * self);                                      /* 0 */                             \
    int32_t(ABI_MEMBER* Release)(Self * self);                                     /* 1 */                             \
    uint32_t(ABI_MEMBER* QueryInterface)(Self * self, const Guid* iid, void** out) /* 2 */

/* What the host supplies. */

typedef struct Record Record;
typedef struct RecordSlots {
    ReservedSlot reserved0to6[7];                                                                /* 0 to 6 */
    int32_t(ABI_MEMBER* GetInt32)(Record* self, const char* name, int32_t* value);               /* 7 */
    int32_t(ABI_MEMBER* GetInt64)(Record* self, const char* name, int64_t* value);               /* 8 */
    ReservedSlot reserved9;                                                                      /* 9 */
    int32_t(ABI_MEMBER* GetString)(Record* self, const char* name, char* buffer, int32_t* size); /* 10 */
    ReservedSlot beyond[4];                                                                      /* no slots */
} RecordSlots;
struct Record {
    const RecordSlots* slots;
};

typedef struct Host Host;
typedef struct HostSlots {
    ReservedSlot reserved0to1[2]; /* 0 and 1 */
    int32_t(ABI_MEMBER* DeleteDot)(Host* self, const char* guid, const char* mid, int32_t kind,
                                   const char* type);                                                /* 2 */
    int32_t(ABI_MEMBER* QueryDot)(Host* self, const char* guidJson, const char* mid, char** result); /* 3 */
    int32_t(ABI_MEMBER* FreeResult)(Host* self, char* result);                                       /* 4 */
    ReservedSlot beyond[4];                                                                          /* no slots */
} HostSlots;
struct Host {
    const HostSlots* slots;
};

typedef struct Sink Sink;
typedef struct SinkSlots {
    int32_t(ABI_MEMBER* Report)(Sink* self, int32_t kind, const char* text, uint32_t size); /* 0 */
    ReservedSlot beyond[4];                                                                 /* no slots */
} SinkSlots;
struct Sink {
    const SinkSlots* slots;
};

/* The receiver. A bool comes in the low byte of the result; the other bits may hold anything. */

typedef struct Receiver Receiver;
typedef struct ReceiverSlots {
    UNKNOWN_SLOTS(Receiver);
    uint8_t(ABI_MEMBER* Init)(Receiver* self, Host* host);                                        /* 3 */
    uint8_t(ABI_MEMBER* Uninit)(Receiver* self);                                                  /* 4 */
    uint8_t(ABI_MEMBER* GetProperty)(Receiver* self, uint32_t key, uint32_t data, uint32_t size); /* 5 */
    uint8_t(ABI_MEMBER* SetProperty)(Receiver* self, uint32_t key, void* data, uint32_t size);    /* 6 */
    void*(ABI_MEMBER* Destructor)(Receiver* self, uint32_t deleteFlag);                           /* 7 */
    uint8_t(ABI_MEMBER* Start)(Receiver* self);                                                   /* 8 */
    uint8_t(ABI_MEMBER* Stop)(Receiver* self);                                                    /* 9 */
    uint8_t(ABI_MEMBER* HandleEvent)(Receiver* self, Record* event, Record** rules, uint32_t ruleCount,
                                     uint32_t* reply);                   /* 10 */
    uint8_t(ABI_MEMBER* SetAllowList)(Receiver* self, const char* text); /* 11 */
    uint8_t(ABI_MEMBER* ClearAllowList)(Receiver* self);                 /* 12 */
    uint8_t(ABI_MEMBER* SetReportSink)(Receiver* self, Sink* sink);      /* 13 */
} ReceiverSlots;
struct Receiver {
    const ReceiverSlots* slots;
};

/* Services of the sibling libraries. */

typedef struct Service Service; /* one that is held and released only */
typedef struct ServiceSlots {
    UNKNOWN_SLOTS(Service);
    ReservedSlot beyond[4]; /* 3 and on: what they do is nobody's business */
} ServiceSlots;
struct Service {
    const ServiceSlots* slots;
};

typedef struct ModuleFinder ModuleFinder;
typedef struct ModuleFinderSlots {
    UNKNOWN_SLOTS(ModuleFinder);
    void*(ABI_MEMBER* FindModule)(ModuleFinder* self, const Utf16* moduleKey); /* 3 */
    ReservedSlot beyond[4];                                                    /* no slots */
} ModuleFinderSlots;
struct ModuleFinder {
    const ModuleFinderSlots* slots;
};

typedef struct MachineIdRecord {
    Utf16 machineId[68];
} MachineIdRecord;

typedef struct MachineIdService MachineIdService;
typedef struct MachineIdServiceSlots {
    UNKNOWN_SLOTS(MachineIdService);
    int32_t(ABI_MEMBER* GetMachineId)(MachineIdService* self, MachineIdRecord* record); /* 3 */
    ReservedSlot beyond[4];                                                             /* no slots */
} MachineIdServiceSlots;
struct MachineIdService {
    const MachineIdServiceSlots* slots;
};

typedef struct LogConfig LogConfig;
typedef struct LogConfigSlots {
    UNKNOWN_SLOTS(LogConfig);
    ReservedSlot reserved3;                                                                 /* 3 */
    const Utf16*(ABI_MEMBER* GetConfigText)(LogConfig* self, uint32_t code, uint32_t zero); /* 4 */
    ReservedSlot beyond[4];                                                                 /* no slots */
} LogConfigSlots;
struct LogConfig {
    const LogConfigSlots* slots;
};

typedef struct LogWriter LogWriter;
typedef struct LogWriterSlots {
    UNKNOWN_SLOTS(LogWriter);
    int32_t(ABI_MEMBER* Start)(LogWriter* self, const Utf16* moduleName, uint32_t zero); /* 3 */
    ReservedSlot reserved4;                                                              /* 4 */
    int32_t(ABI_MEMBER* SetLevel)(LogWriter* self, uint32_t level);                      /* 5 */
    ReservedSlot reserved6;                                                              /* 6 */
    int32_t(ABI_MEMBER* WriteRecord)(LogWriter* self, const Utf16* text, int32_t level); /* 7 */
    ReservedSlot beyond[4];                                                              /* no slots */
} LogWriterSlots;
struct LogWriter {
    const LogWriterSlots* slots;
};

typedef struct TextConversionRequest {
    uint32_t codePage;
    uint32_t sourceLength;
    uint32_t destinationCapacity;
    uint32_t reserved;
    const void* source;
    void* destination;
} TextConversionRequest;

typedef struct TextConverter TextConverter;
typedef struct TextConverterSlots {
    UNKNOWN_SLOTS(TextConverter);
    int32_t(ABI_MEMBER* Convert)(TextConverter* self, uint32_t command, TextConversionRequest* request); /* 3 */
    ReservedSlot beyond[4];                                                                              /* no slots */
} TextConverterSlots;
struct TextConverter {
    const TextConverterSlots* slots;
};

#undef UNKNOWN_SLOTS

#ifdef __cplusplus
}
#endif
