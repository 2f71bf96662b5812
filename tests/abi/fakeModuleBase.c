/* The module behind "module.base": the machine id, the log configuration and the logger. */
#include <stdio.h>
#include <string.h>

#include "fakeSibling.h"

SERVICE_UNKNOWN(MachineIdService, IMachineIdService)
RESERVED_SLOT(IMachineIdService, 4)
RESERVED_SLOT(IMachineIdService, 5)
RESERVED_SLOT(IMachineIdService, 6)
RESERVED_SLOT(IMachineIdService, 7)

/* Fills all 136 bytes: the id "MID-äて" with its NUL, and other things behind it. */
static int32_t ABI_MEMBER MachineIdGet(MachineIdService* self, MachineIdRecord* record) {
    (void)self;
    static const Utf16 id[] = {'M', 'I', 'D', '-', 0xE4, 0x3066, 0};
    int zeros = 0;
    for (size_t i = 0; i < sizeof *record; ++i) {
        zeros += ((const char*)record)[i] == 0;
    }
    Note("IMachineIdService.GetMachineId, %d of %d bytes zero", zeros, (int)sizeof *record);
    memset(record, 0x7E, sizeof *record);
    memcpy(record->machineId, id, sizeof id);
    return 0;
}

static const MachineIdServiceSlots machineIdSlots = {
    MachineIdServiceAddRef,
    MachineIdServiceRelease,
    MachineIdServiceQueryInterface,
    MachineIdGet,
    {IMachineIdServiceSlot4, IMachineIdServiceSlot5, IMachineIdServiceSlot6, IMachineIdServiceSlot7},
};
static MachineIdService machineId = {&machineIdSlots};

SERVICE_UNKNOWN(LogConfig, ILogConfig)
RESERVED_SLOT(ILogConfig, 3)
RESERVED_SLOT(ILogConfig, 5)
RESERVED_SLOT(ILogConfig, 6)
RESERVED_SLOT(ILogConfig, 7)
RESERVED_SLOT(ILogConfig, 8)

static const Utf16* ABI_MEMBER ConfigGetText(LogConfig* self, uint32_t code, uint32_t zero) {
    (void)self;
    Note("ILogConfig.GetConfigText 0x%lX, %lu", (unsigned long)code, (unsigned long)zero);
    return siblingSetUp.configDirectory;
}

static const LogConfigSlots configSlots = {
    LogConfigAddRef, LogConfigRelease, LogConfigQueryInterface,
    ILogConfigSlot3, ConfigGetText,    {ILogConfigSlot5, ILogConfigSlot6, ILogConfigSlot7, ILogConfigSlot8},
};
static LogConfig config = {&configSlots};

SERVICE_UNKNOWN(LogWriter, ILogWriter)
RESERVED_SLOT(ILogWriter, 4)
RESERVED_SLOT(ILogWriter, 6)
RESERVED_SLOT(ILogWriter, 8)
RESERVED_SLOT(ILogWriter, 9)
RESERVED_SLOT(ILogWriter, 10)
RESERVED_SLOT(ILogWriter, 11)

static int32_t ABI_MEMBER WriterStart(LogWriter* self, const Utf16* moduleName, uint32_t zero) {
    (void)self;
    Note("ILogWriter.Start %s, %lu", Narrow(moduleName).text, (unsigned long)zero);
    return 0;
}

static int32_t ABI_MEMBER WriterSetLevel(LogWriter* self, uint32_t level) {
    (void)self;
    Note("ILogWriter.SetLevel %lu", (unsigned long)level);
    return 0;
}

/* Notes the record without what differs from run to run: time, source line and thread. */
static int32_t ABI_MEMBER WriterWriteRecord(LogWriter* self, const Utf16* text, int32_t level) {
    (void)self;
    const NarrowText record = Narrow(text);
    char levelName[8];
    char file[64];
    char function[128];
    int head = 0;
    sscanf(record.text, "%*d-%*2d-%*2d %*2d:%*2d:%*2d [%7[A-Z]][%63[^ ] %*d][%127[^]]] [%*u] %n", levelName, file,
           function, &head);
    if (head == 0) {
        Note("ILogWriter.WriteRecord of no known form: %s, %ld", record.text, (long)level);
    } else {
        Note("ILogWriter.WriteRecord TIME [%s][%s LINE][%s] [THREAD] %s, %ld", levelName, file, function,
             record.text + head, (long)level);
    }
    return 0;
}

static const LogWriterSlots writerSlots = {
    LogWriterAddRef, LogWriterRelease,  LogWriterQueryInterface,
    WriterStart,     ILogWriterSlot4,   WriterSetLevel,
    ILogWriterSlot6, WriterWriteRecord, {ILogWriterSlot8, ILogWriterSlot9, ILogWriterSlot10, ILogWriterSlot11},
};
static LogWriter writer = {&writerSlots};

ABI_EXPORT uint32_t ABI_FACTORY CreateZelkObject(const Guid* iid, void** out);
ABI_EXPORT uint32_t ABI_FACTORY CreateZelkObject(const Guid* iid, void** out) {
    static const KnownService services[] = {
        {"{F81DEF0B-B738-4D44-A02E-CC0E7C59D3AA}", &machineId},
        {"{BE29AE26-D1F3-4E58-843D-5D0A485DFE24}", &config},
        {"{68F7E655-0361-40B6-8846-F140043AA417}", &writer},
    };
    return FindService("ModuleBase", services, 3, iid, out);
}
