#include "model/directSiblings.h"

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

namespace model {
namespace {

constexpr uint32_t refused = 0x80004002;

const SiblingState defaultState;
const SiblingState* state = &defaultState;
thread_local RecordTaker* recordTaker = nullptr;

class Finder final : public kit::PlainService<IModuleFinder> {
public:
    void* FindModule(const WideChar*) override { return module; }
    void* module = nullptr;
};

class MachineId final : public kit::PlainService<IMachineIdService> {
public:
    int32_t GetMachineId(MachineIdRecord* record) override {
        std::copy(state->machineId.begin(), state->machineId.end(), record->machineId);
        return state->machineIdResult;
    }
};

class LogConfig final : public kit::PlainService<ILogConfig> {
public:
    const WideChar* GetConfigText(uint32_t, uint32_t) override {
        return (state->tellsSettings ? directory : emptyDirectory).c_str();
    }
    std::basic_string<WideChar> directory;
    std::basic_string<WideChar> emptyDirectory;
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

// Never destroyed: the receiver holds services to the end of the process.
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
        if (!state->settlesLogging) {
            return refused;
        }
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
        services.directory = std::filesystem::temp_directory_path() / ("mordRevModel" + std::to_string(random()));
        std::filesystem::create_directories(services.directory);
        std::atexit(RemoveDirectory);
        services.logConfig.directory = kit::ToWide((services.directory / "").string());
        services.logConfig.emptyDirectory = kit::ToWide((services.directory / "none" / "").string());
    }
    std::ofstream(services.directory / "Zelklog.ini") << "[OUTLOG]\nWriteLog=" << (logs ? 1 : 0) << "\n";
}

void AnswerBy(const SiblingState* newState) {
    state = newState == nullptr ? &defaultState : newState;
}

void TakeRecords(RecordTaker* taker) {
    recordTaker = taker;
}

} // namespace model
