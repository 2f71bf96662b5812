#include "model/siblings.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "frame/interfaces.h"
#include "model/libraryRecord.h"
#include "model/module.h"

namespace model {
namespace {

using WideText = std::basic_string<WideChar>;

constexpr uint32_t refused = 0x80004002;

const SiblingState* state = nullptr;
Trace* trace = nullptr;
bool hasLogger = false;

// A service that lives as long as the program.
template <typename Interface>
class Service : public Interface {
public:
    int32_t AddRef() override { return 2; }
    int32_t Release() override { return 1; }
    uint32_t QueryInterface(const GUID*, void**) override { return refused; }
};

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
    // Returns whether the source ends where the request says.
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
    std::filesystem::path folder;
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

uint32_t MORD_CDECL Create(const GUID* iid, void** out) {
    Services& services = TheServices();
    const auto is = [iid](const GUID& id) { return std::memcmp(iid, &id, sizeof id) == 0; };
    if (is(SID_ModuleFinder)) {
        *out = static_cast<IModuleFinder*>(&services.finder);
    } else if (is(SID_TextConverter)) {
        *out = static_cast<ITextConverter*>(&services.converter);
    } else if (is(SID_MachineId)) {
        trace->Add("siblings: machine id service");
        *out = static_cast<IMachineIdService*>(&services.machineId);
    } else if (is(SID_LogConfig) && !state->settlesLogging) {
        return refused;
    } else if (is(SID_LogConfig)) {
        *out = static_cast<ILogConfig*>(&services.logConfig);
    } else if (is(SID_LogWriter)) {
        *out = static_cast<ILogWriter*>(&services.logWriter);
    } else {
        *out = static_cast<ISmartUnknown*>(&services.others);
    }
    return 0;
}

void* LoadRelay(const char* name) {
    void* const relay = LoadModule(ProgramFolder() / "modelSiblings" / LibraryFile(name));
    reinterpret_cast<void(MORD_CDECL*)(CreateZelkObjectFunction)>(SymbolOf(relay, "SetRelayTarget"))(Create);
    return relay;
}

WideText FolderText(const std::filesystem::path& folder) {
    const std::string text = (folder / "").string(); // the library appends the name of the file
    return {text.begin(), text.end()};
}

void RemoveFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(TheServices().folder, ignored);
}

} // namespace

void LoadSiblings() {
    Services& services = TheServices();
    if (services.finder.base != nullptr) {
        return;
    }
    services.finder.base = LoadRelay("ZelkBase");
    LoadRelay("Ferrocore");
    std::random_device random;
    services.folder = std::filesystem::temp_directory_path() / ("mordRevModel" + std::to_string(random()));
    std::filesystem::create_directories(services.folder);
    std::atexit(RemoveFolder);
    services.logConfig.withFile = FolderText(services.folder);
    services.logConfig.withoutFile = FolderText(services.folder / "none");
    std::ofstream(services.folder / "Zelklog.ini") << "[OUTLOG]\nWriteLog=1\nLogLevel=" << logLevel << "\n";
}

std::filesystem::path ScratchFolder() {
    return TheServices().folder;
}

void UseSiblings(const SiblingState* newState, Trace* newTrace) {
    state = newState;
    trace = newTrace;
    hasLogger = false;
}

} // namespace model
