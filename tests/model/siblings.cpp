#include "model/siblings.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "frame/interfaces.h"
#include "kit/siblings/plainServices.h"
#include "kit/siblings/relayLibrary.h"
#include "kit/system/temporaryDirectory.h"
#include "model/libraryRecord.h"

namespace model {
namespace {

using WideText = std::basic_string<WideChar>;

constexpr uint32_t refused = 0x80004002;

const SiblingState* state = nullptr;
Trace* trace = nullptr;
bool hasLogger = false;

template <typename Interface>
using Service = kit::PlainService<Interface>;

class Finder final : public Service<IModuleFinder> {
public:
    void* FindModule(const WideChar* key) override {
        return std::basic_string_view<WideChar>(key) == WIDE("module.base") ? base : nullptr;
    }
    void* base = nullptr;
};

class MachineId final : public Service<IMachineIdService> {
public:
    int32_t GetMachineId(MachineIdRecord* record) override {
        const bool cleared =
            std::all_of(std::begin(record->machineId), std::end(record->machineId), [](WideChar c) { return c == 0; });
        trace->Add({"siblings: machine id", cleared ? "" : " into a record that is not cleared"});
        std::copy(state->machineId.begin(), state->machineId.end(), record->machineId);
        return state->machineIdResult;
    }
};

class LogConfig final : public Service<ILogConfig> {
public:
    const WideChar* GetConfigText(uint32_t code, uint32_t zero) override {
        const bool known = code == LOG_CONFIG_DIRECTORY && zero == 0;
        return known ? (state->writesLog ? withFile : withoutFile).c_str() : nullptr;
    }
    WideText withFile;
    WideText withoutFile;
};

class LogWriter final : public Service<ILogWriter> {
public:
    int32_t Start(const WideChar* name, uint32_t zero) override {
        hasLogger = true;
        trace->Add({"siblings: start logger ", Narrow(name), " ", Decimal(zero)});
        return 0;
    }
    int32_t SetLevel(uint32_t level) override {
        trace->Add({"siblings: log level ", Decimal(level)});
        return 0;
    }
    int32_t WriteRecord(const WideChar* text, int32_t level) override {
        AddRecord(level, text, *trace);
        return 0;
    }
};

class Converter final : public Service<ITextConverter> {
public:
    int32_t Convert(uint32_t command, TextConversionRequest* request) override {
        const uint32_t length = request->sourceLength;
        bool good = request->codePage == 65001 && request->reserved == 0 && length > 0;
        if (command == CONVERT_NARROW_TO_WIDE) {
            if (!hasLogger) {
                trace->Add("siblings: wide text without a logger");
            }
            good = good && request->destinationCapacity == 2 * length + 4 && Copy<unsigned char, WideChar>(*request);
        } else {
            good = good && command == CONVERT_WIDE_TO_NARROW && request->destinationCapacity == 4 * length &&
                   Copy<WideChar, unsigned char>(*request);
            trace->Add({"siblings: narrow ", {static_cast<const char*>(request->destination), length}});
        }
        if (!good) {
            trace->Add({"siblings: wrong conversion request of length ", Decimal(length)});
        }
        return 0;
    }

private:
    // Returns whether the source ends at the length of the request.
    template <typename From, typename To>
    static bool Copy(const TextConversionRequest& request) {
        const auto* const source = static_cast<const From*>(request.source);
        auto* const destination = static_cast<To*>(request.destination);
        std::transform(source, source + request.sourceLength, destination, [](From c) { return static_cast<To>(c); });
        destination[request.sourceLength] = To{};
        return source[request.sourceLength] == From{} &&
               std::find(source, source + request.sourceLength, From{}) == source + request.sourceLength;
    }
};

struct Services {
    kit::DynamicLibrary zelkBase;
    kit::DynamicLibrary ferrocore;
    Finder finder;
    Converter converter;
    MachineId machineId;
    LogConfig logConfig;
    LogWriter logWriter;
    Service<ISmartUnknown> others;
};

// Never destroyed: the library keeps services until it is unloaded.
Services& TheServices() {
    static Services* const services = new Services;
    return *services;
}

const kit::TemporaryDirectory& TheDirectory() {
    static const kit::TemporaryDirectory directory("mordRevModel");
    return directory;
}

uint32_t MORD_CDECL Create(const GUID* iid, void** out) {
    Services& services = TheServices();
    void* const service = kit::FindService(services, *iid);
    if (service == static_cast<ILogConfig*>(&services.logConfig) && !state->settlesLogging) {
        return refused;
    }
    if (service == static_cast<IMachineIdService*>(&services.machineId)) {
        trace->Add("siblings: machine id service");
    }
    *out = service;
    return 0;
}

WideText FolderText(const std::string& name) {
    const std::string text = TheDirectory().Name(name) + "/"; // the library appends the name of the file
    return {text.begin(), text.end()};
}

} // namespace

void LoadSiblings() {
    Services& services = TheServices();
    if (services.finder.base != nullptr) {
        return;
    }
    services.zelkBase = kit::LoadRelay("ZelkBase", Create);
    services.ferrocore = kit::LoadRelay("Ferrocore", Create);
    services.finder.base = services.zelkBase.Handle();
    services.logConfig.withFile = FolderText(".");
    services.logConfig.withoutFile = FolderText("none");
    TheDirectory().Write("Zelklog.ini", "[OUTLOG]\nWriteLog=1\nLogLevel=" + std::to_string(logLevel) + "\n");
}

std::filesystem::path ScratchFolder() {
    return TheDirectory().Path();
}

void UseSiblings(const SiblingState* newState, Trace* newTrace) {
    state = newState;
    trace = newTrace;
    hasLogger = false;
}

} // namespace model
