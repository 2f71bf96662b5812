#include "race/directSiblings.h"

#include <algorithm>
#include <string>

#include "frame/interfaces.h"
#include "kit/siblings/plainServices.h"
#include "kit/siblings/relayLibrary.h"
#include "kit/system/temporaryDirectory.h"
#include "kit/text/utf.h"
#include "logging/logState.h"
#include "mordRev/src/mordRev.h"

namespace race {
namespace {

thread_local RecordTaker* recordTaker = nullptr;

class Finder final : public kit::PlainService<IModuleFinder> {
public:
    void* FindModule(const WideChar*) override { return module; }
    void* module = nullptr;
};

class MachineId final : public kit::PlainService<IMachineIdService> {
public:
    int32_t GetMachineId(MachineIdRecord* record) override {
        constexpr std::basic_string_view<WideChar> id = WIDE("HOST");
        std::copy(id.begin(), id.end(), record->machineId);
        return 0;
    }
};

class LogConfig final : public kit::PlainService<ILogConfig> {
public:
    const WideChar* GetConfigText(uint32_t, uint32_t) override { return directory.c_str(); }
    std::basic_string<WideChar> directory;
};

class LogWriter final : public kit::PlainService<ILogWriter> {
public:
    int32_t Start(const WideChar*, uint32_t) override { return 0; }
    int32_t SetLevel(uint32_t) override { return 0; }
    int32_t WriteRecord(const WideChar* text, int32_t level) override {
        if (recordTaker != nullptr) {
            recordTaker->Take(level, text);
        }
        return 0;
    }
};

struct Services {
    kit::DynamicLibrary zelkBase;
    kit::DynamicLibrary ferrocore;
    Finder finder;
    kit::ByteConverter converter;
    MachineId machineId;
    LogConfig logConfig;
    LogWriter logWriter;
    kit::PlainService<ISmartUnknown> others;
};

// Never destroyed: the library keeps services to the end of the process.
Services& TheServices() {
    static Services* const services = new Services;
    return *services;
}

uint32_t MORD_CDECL Create(const GUID* iid, void** out) {
    *out = kit::FindService(TheServices(), *iid);
    return 0;
}

} // namespace

void UseDirectSiblings(bool logs) {
    static const kit::TemporaryDirectory directory("mordRevRace");
    Services& services = TheServices();
    if (services.finder.module == nullptr) {
        services.zelkBase = kit::LoadRelay("ZelkBase", Create);
        services.ferrocore = kit::LoadRelay("Ferrocore", Create);
        services.finder.module = services.zelkBase.Handle();
        services.logConfig.directory = kit::ToWide(directory.Name(""));
    }
    directory.Write("Zelklog.ini", std::string("[OUTLOG]\nWriteLog=") + (logs ? "1" : "0") + "\n");
}

void PrepareLibrary(bool logs) {
    LogFileEnabled = false;
    LogDebugViewEnabled = false;
    LoggerObject.Reset();
    UseDirectSiblings(logs);
    CMordRecv().InitLogMoudle(); // sets the flags
}

void TakeRecords(RecordTaker* taker) {
    recordTaker = taker;
}

} // namespace race
