#include "kit/siblings/scriptedSiblings.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <random>

#include "frame/sameIdentifier.h"
#include "frame/values.h"
#include "kit/siblings/dynamicLibrary.h"
#include "kit/siblings/relayLibrary.h"
#include "kit/text/logRecords.h"
#include "kit/text/utf.h"

namespace kit {

namespace {

struct Relays {
    DynamicLibrary zelkBase;
    DynamicLibrary ferrocore;
    DynamicLibrary noFactory;
};

Relays& TheRelays() {
    static Relays* const relays =
        new Relays; // never unloaded by an exit handler: the library may still release services
    return *relays;
}

std::atomic<int> converterReferences{0};

std::filesystem::path RelayFolder() {
    return ProgramFolder() / "siblings";
}

} // namespace

// The services themselves. They live as long as the process and count nothing; each logs what is called.
struct Services {
    template <typename Interface>
    class Service : public Interface {
    public:
        explicit Service(std::string name) : m_name(std::move(name)) {}
        int32_t AddRef() override {
            Log("AddRef");
            return ScriptedSiblings::Instance().countResult.value_or(2);
        }
        int32_t Release() override {
            Log("Release");
            return ScriptedSiblings::Instance().countResult.value_or(1);
        }
        uint32_t QueryInterface(const GUID*, void**) override {
            Log("QueryInterface");
            return RESULT_NO_INTERFACE;
        }

    protected:
        void Log(const std::string& operation) { ScriptedSiblings::Instance().calls.Add(m_name + "." + operation); }

    private:
        std::string m_name;
    };

    class Finder : public Service<IModuleFinder> {
    public:
        using Service::Service;
        void* FindModule(const WideChar* key) override {
            Log("FindModule(" + ToNarrow(key) + ")");
            if (const auto& found = ScriptedSiblings::Instance().foundModule) {
                return *found;
            }
            switch (ScriptedSiblings::Instance().finder) {
            case ScriptedSiblings::Finder::GivesZelkBase:
                return TheRelays().zelkBase.Handle();
            case ScriptedSiblings::Finder::GivesModuleWithoutFactory:
                return TheRelays().noFactory.Handle();
            case ScriptedSiblings::Finder::GivesNull:
                break;
            }
            return nullptr;
        }
    };

    class MachineId : public Service<IMachineIdService> {
    public:
        using Service::Service;
        int32_t Release() override {
            if (const auto& within = ScriptedSiblings::Instance().onMachineIdRelease) {
                within();
            }
            return Service::Release();
        }
        int32_t GetMachineId(MachineIdRecord* record) override {
            const auto& script = ScriptedSiblings::Instance();
            const bool cleared = std::all_of(std::begin(record->machineId), std::end(record->machineId),
                                             [](WideChar unit) { return unit == WideChar{}; });
            Log(cleared ? "GetMachineId" : "GetMachineId of a record that was not cleared");
            const size_t length = std::min(script.machineId.size(), std::size(record->machineId));
            std::copy_n(script.machineId.begin(), length, record->machineId);
            return script.machineIdResult;
        }
    };

    class LogConfig : public Service<ILogConfig> {
    public:
        using Service::Service;
        const WideChar* GetConfigText(uint32_t code, uint32_t zero) override {
            Log("GetConfigText(" + std::to_string(code) + "," + std::to_string(zero) + ")");
            auto& texts = ScriptedSiblings::Instance().configTexts;
            const std::optional<std::string> text = texts.front();
            if (texts.size() > 1) {
                texts.erase(texts.begin());
            }
            m_text = ToWide(text.value_or(""));
            return text ? m_text.c_str() : nullptr;
        }

    private:
        std::basic_string<WideChar> m_text;
    };

    class LogWriter : public Service<ILogWriter> {
    public:
        using Service::Service;
        int32_t Start(const WideChar* moduleName, uint32_t zero) override {
            Log("Start(" + ToNarrow(moduleName) + "," + std::to_string(zero) + ")");
            return ScriptedSiblings::Instance().writerResult;
        }
        int32_t SetLevel(uint32_t level) override {
            Log("SetLevel(" + std::to_string(level) + ")");
            return ScriptedSiblings::Instance().writerResult;
        }
        int32_t WriteRecord(const WideChar* text, int32_t level) override {
            auto& script = ScriptedSiblings::Instance();
            const std::string raw = ToNarrow(text);
            const std::string masked = MaskRecord(raw);
            if (script.logsRecords) {
                Log("WriteRecord(" + masked + "," + std::to_string(level) + ")");
            }
            const std::lock_guard lock(script.m_lock);
            script.m_records.push_back({level, masked, raw});
            return script.writerResult;
        }
    };

    class Converter : public Service<ITextConverter> {
    public:
        using Service::Service;
        int32_t AddRef() override { return ++converterReferences; }
        int32_t Release() override { return --converterReferences; }
        int32_t Convert(uint32_t command, TextConversionRequest* request) override {
            auto& script = ScriptedSiblings::Instance();
            if (converterReferences < 1) {
                script.converterIsReferencedWithin = false;
            }
            if (script.keepsConversions) {
                const std::lock_guard lock(script.m_lock);
                script.m_conversions.push_back(Describe(command, *request));
            }
            if (script.onConvert) {
                if (const auto result = script.onConvert(command, *request)) {
                    return *result;
                }
            }
            if (command == CONVERT_NARROW_TO_WIDE) {
                Deliver(ToWide({static_cast<const char*>(request->source), request->sourceLength}), *request);
            } else if (command == CONVERT_WIDE_TO_NARROW) {
                Deliver(ToNarrow({static_cast<const WideChar*>(request->source), request->sourceLength}), *request);
            }
            return 0;
        }

    private:
        static std::string Describe(uint32_t command, const TextConversionRequest& request) {
            const char* const direction = command == CONVERT_NARROW_TO_WIDE   ? "narrow to wide"
                                          : command == CONVERT_WIDE_TO_NARROW ? "wide to narrow"
                                                                              : "unknown command";
            return std::string(direction) + " codepage=" + std::to_string(request.codePage) +
                   " length=" + std::to_string(request.sourceLength) +
                   " capacity=" + std::to_string(request.destinationCapacity) +
                   " reserved=" + std::to_string(request.reserved);
        }

        template <typename Char>
        static void Deliver(const std::basic_string<Char>& text, const TextConversionRequest& request) {
            const auto& script = ScriptedSiblings::Instance();
            if (!script.converterWrites) {
                return;
            }
            auto* const destination = static_cast<Char*>(request.destination);
            if (!script.converterWritesNul) {
                for (uint32_t i = 0; i < request.destinationCapacity; ++i) {
                    destination[i] = i < text.size() ? text[i] : Char{'#'};
                }
                return;
            }
            const size_t length = std::min<size_t>(text.size(), request.destinationCapacity - 1);
            std::copy_n(text.data(), length, destination);
            destination[length] = Char{};
        }
    };

    Service<ISmartUnknown> one{"BaseServiceOne"};
    Service<ISmartUnknown> two{"BaseServiceTwo"};
    Service<ISmartUnknown> three{"BaseServiceThree"};
    Service<ISmartUnknown> ferrocore{"FerrocoreService"};
    Finder finder{"IModuleFinder"};
    MachineId machineId{"IMachineIdService"};
    LogConfig logConfig{"ILogConfig"};
    LogWriter logWriter{"ILogWriter"};
    Converter converter{"ITextConverter"};

    struct Row {
        const char* name;
        const GUID* id;
        void* service;
    };

    std::vector<Row> Table() {
        return {{"IModuleFinder", &SID_ModuleFinder, static_cast<IModuleFinder*>(&finder)},
                {"ITextConverter", &SID_TextConverter, static_cast<ITextConverter*>(&converter)},
                {"BaseServiceOne", &SID_BaseServiceOne, static_cast<ISmartUnknown*>(&one)},
                {"BaseServiceTwo", &SID_BaseServiceTwo, static_cast<ISmartUnknown*>(&two)},
                {"BaseServiceThree", &SID_BaseServiceThree, static_cast<ISmartUnknown*>(&three)},
                {"FerrocoreService", &SID_FerrocoreService, static_cast<ISmartUnknown*>(&ferrocore)},
                {"IMachineIdService", &SID_MachineId, static_cast<IMachineIdService*>(&machineId)},
                {"ILogConfig", &SID_LogConfig, static_cast<ILogConfig*>(&logConfig)},
                {"ILogWriter", &SID_LogWriter, static_cast<ILogWriter*>(&logWriter)}};
    }

    static Services& Instance() {
        static Services* const services = new Services;
        return *services;
    }
};

namespace {

// The factory of both relays. It refuses by its result code and leaves the pointer alone.
uint32_t MORD_CDECL CreateScripted(const GUID* iid, void** out) {
    auto& script = ScriptedSiblings::Instance();
    for (const auto& row : Services::Instance().Table()) {
        if (SameIdentifier(*row.id, *iid)) {
            const bool refused = script.refused.contains(row.name);
            script.calls.Add((refused ? "refuse " : "create ") + std::string(row.name));
            if (refused) {
                return RESULT_NO_INTERFACE;
            }
            if (!script.hollow.contains(row.name)) {
                *out = row.service;
            }
            return script.grudging.contains(row.name) ? RESULT_NO_INTERFACE : RESULT_OK;
        }
    }
    script.calls.Add("refuse an unknown service");
    return RESULT_NO_INTERFACE;
}

} // namespace

std::string ServiceName(const GUID& id) {
    for (const auto& row : Services::Instance().Table()) {
        if (SameIdentifier(*row.id, id)) {
            return row.name;
        }
    }
    return "unknown";
}

CreateZelkObjectFunction ScriptedSiblings::Factory() {
    return CreateScripted;
}

ScriptedSiblings& ScriptedSiblings::Instance() {
    static ScriptedSiblings siblings;
    return siblings;
}

ScriptedSiblings::ScriptedSiblings() {
    std::random_device random;
    m_logDirectory = std::filesystem::temp_directory_path() / ("mordRevTest" + std::to_string(random()));
    std::filesystem::create_directories(m_logDirectory);
    Services::Instance();
}

ScriptedSiblings::~ScriptedSiblings() {
    std::error_code ignored;
    std::filesystem::remove_all(m_logDirectory, ignored);
}

void ScriptedSiblings::Reset() {
    refused.clear();
    grudging.clear();
    hollow.clear();
    writerResult = 0;
    countResult.reset();
    finder = Finder::GivesZelkBase;
    configTexts = {LogDirectory().string()};
    machineId = u"SCRIPTED-MACHINE";
    machineIdResult = 0;
    foundModule.reset();
    logsRecords = false;
    onMachineIdRelease = nullptr;
    onConvert = nullptr;
    calls.onAdd = nullptr;
    keepsConversions = false;
    converterWrites = true;
    converterWritesNul = true;
    converterIsReferencedWithin = true;
    RemoveIni();
    LoadZelkBase();
    LoadFerrocore();
    if (TheRelays().noFactory.Handle() == nullptr) {
        TheRelays().noFactory = DynamicLibrary(RelayFolder() / LibraryFile("noFactory"));
    }
    calls.Take();
    TakeRecordTexts();
    const std::lock_guard lock(m_lock);
    m_conversions.clear();
}

void ScriptedSiblings::LoadZelkBase() {
    UnloadZelkBase();
    TheRelays().zelkBase = LoadRelay("ZelkBase", CreateScripted);
}

void ScriptedSiblings::LoadZelkBaseWithoutFactory() {
    UnloadZelkBase();
    TheRelays().zelkBase = DynamicLibrary(RelayFolder() / "noFactory" / LibraryFile("ZelkBase"));
}

void ScriptedSiblings::UnloadZelkBase() {
    TheRelays().zelkBase.Close();
}

void ScriptedSiblings::LoadFerrocore() {
    UnloadFerrocore();
    TheRelays().ferrocore = LoadRelay("Ferrocore", CreateScripted);
}

void ScriptedSiblings::UnloadFerrocore() {
    TheRelays().ferrocore.Close();
}

void ScriptedSiblings::WriteIni(const std::string& text) {
    std::ofstream(m_logDirectory / "Zelklog.ini", std::ios::binary) << text;
}

void ScriptedSiblings::RemoveIni() {
    std::filesystem::remove(m_logDirectory / "Zelklog.ini");
}

std::vector<WrittenRecord> ScriptedSiblings::Records() const {
    const std::lock_guard lock(m_lock);
    return m_records;
}

std::vector<std::string> ScriptedSiblings::RecordTexts() const {
    std::vector<std::string> texts;
    for (const auto& record : Records()) {
        texts.push_back(record.text);
    }
    return texts;
}

std::vector<std::string> ScriptedSiblings::TakeRecordTexts() {
    std::vector<std::string> texts = RecordTexts();
    const std::lock_guard lock(m_lock);
    m_records.clear();
    return texts;
}

std::vector<std::string> ScriptedSiblings::Conversions() const {
    const std::lock_guard lock(m_lock);
    return m_conversions;
}

int ScriptedSiblings::ConverterReferences() const {
    return converterReferences;
}

std::filesystem::path ScriptedSiblings::LogDirectory() const {
    return m_logDirectory / "";
}

} // namespace kit
