#include "race/directSiblings.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "frame/interfaces.h"
#include "kit/siblings/dynamicLibrary.h"
#include "kit/siblings/plainServices.h"
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
    std::filesystem::path directory;
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
    Services& services = TheServices();
    const auto is = [iid](const GUID& id) { return std::memcmp(iid, &id, sizeof id) == 0; };
    if (is(SID_ModuleFinder)) {
        *out = static_cast<IModuleFinder*>(&services.finder);
    } else if (is(SID_TextConverter)) {
        *out = static_cast<ITextConverter*>(&services.converter);
    } else if (is(SID_MachineId)) {
        *out = static_cast<IMachineIdService*>(&services.machineId);
    } else if (is(SID_LogConfig)) {
        *out = static_cast<ILogConfig*>(&services.logConfig);
    } else if (is(SID_LogWriter)) {
        *out = static_cast<ILogWriter*>(&services.logWriter);
    } else {
        *out = static_cast<ISmartUnknown*>(&services.others);
    }
    return 0;
}

kit::DynamicLibrary LoadRelay(const char* name) {
    kit::DynamicLibrary relay(kit::ProgramFolder() / "siblings" / kit::LibraryFile(name));
    const auto setTarget =
        reinterpret_cast<void(MORD_CDECL*)(CreateZelkObjectFunction)>(relay.Symbol("SetRelayTarget"));
    setTarget(Create);
    return relay;
}

void RemoveDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(TheServices().directory, ignored);
}

} // namespace

void UseDirectSiblings(bool logs) {
    Services& services = TheServices();
    if (services.finder.module == nullptr) {
        services.zelkBase = LoadRelay("ZelkBase");
        services.ferrocore = LoadRelay("Ferrocore");
        services.finder.module = services.zelkBase.Handle();
        std::random_device random;
        services.directory = std::filesystem::temp_directory_path() / ("mordRevRace" + std::to_string(random()));
        std::filesystem::create_directories(services.directory);
        std::atexit(RemoveDirectory);
        services.logConfig.directory = kit::ToWide((services.directory / "").string());
    }
    std::ofstream(services.directory / "Zelklog.ini") << "[OUTLOG]\nWriteLog=" << (logs ? 1 : 0) << "\n";
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
