// ZelkBase, which also is the module behind "module.base".
#include "abi/msvcHost/service.h"

namespace {

constinit HeldService one("service one");
constinit HeldService two("service two");
constinit HeldService three("service three");

class ModuleFinder final : public Service<IModuleFinder> {
public:
    using Service::Service;

    void* FindModule(const wchar_t* moduleKey) override {
        PrintLine(m_name, ": FindModule ", moduleKey);
        return GetModuleHandleW(L"ZelkBase.dll");
    }
};
constinit ModuleFinder finder("module finder");

class MachineId final : public Service<IMachineIdService> {
public:
    using Service::Service;

    int32_t GetMachineId(MachineIdRecord* record) override {
        PrintLine(m_name, ": GetMachineId");
        memcpy(record->machineId, L"MID-1", sizeof L"MID-1");
        return 0;
    }
};
constinit MachineId machineId("machine id");

class LogConfig final : public Service<ILogConfig> {
public:
    using Service::Service;

    void Reserved0() override { Fail("Reserved0"); }
    const wchar_t* GetConfigText(uint32_t code, uint32_t zero) override {
        PrintLine(m_name, ": GetConfigText ", code == LOG_CONFIG_DIRECTORY && zero == 0 ? "the directory" : "unknown");
        return BesideTheProgram(L"");
    }
};
constinit LogConfig logConfig("log configuration");

class LogWriter final : public Service<ILogWriter> {
public:
    using Service::Service;

    int32_t Start(const wchar_t* moduleName, uint32_t zero) override {
        PrintLine(m_name, ": Start ", moduleName, ", ", zero);
        return 0;
    }
    void Reserved0() override { Fail("Reserved0"); }
    int32_t SetLevel(uint32_t level) override {
        PrintLine(m_name, ": SetLevel ", level);
        return 0;
    }
    void Reserved1() override { Fail("Reserved1"); }

    // Counts the records: their words are no matter of the tables.
    int32_t WriteRecord(const wchar_t* text, int32_t level) override {
        if (text[0] != 0 && (level == 30 || level == 35)) {
            ++m_records;
        }
        return 0;
    }
    int32_t Release() override {
        PrintLine(m_name, ": Release, ", m_records != 0 ? "records came" : "no records came");
        return 0;
    }

private:
    uint32_t m_records = 0;
};
constinit LogWriter logWriter("logger");

class TextConverter final : public Service<ITextConverter> {
public:
    using Service::Service;

    int32_t AddRef() override { return 2; }
    int32_t Release() override { return 1; }

    // ASCII, which is all that occurs here.
    int32_t Convert(uint32_t command, TextConversionRequest* request) override {
        const bool widen = command == CONVERT_NARROW_TO_WIDE;
        auto* const narrow = static_cast<char*>(widen ? const_cast<void*>(request->source) : request->destination);
        auto* const wide = static_cast<wchar_t*>(widen ? request->destination : const_cast<void*>(request->source));
        for (uint32_t i = 0; i <= request->sourceLength; ++i) { // with the NUL
            if (widen) {
                wide[i] = static_cast<wchar_t>(narrow[i]);
            } else {
                narrow[i] = static_cast<char>(wide[i]);
            }
        }
        return 0;
    }
};
constinit TextConverter converter("text converter");

} // namespace

extern "C" __declspec(dllexport) uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    struct Row {
        const GUID& id;
        ISmartUnknown* service;
    };
    const Row rows[] = {
        {SID_BaseServiceOne, &one},  {SID_BaseServiceTwo, &two},      {SID_BaseServiceThree, &three},
        {SID_ModuleFinder, &finder}, {SID_TextConverter, &converter}, {SID_MachineId, &machineId},
        {SID_LogConfig, &logConfig}, {SID_LogWriter, &logWriter},
    };
    for (const Row& row : rows) {
        if (IsService(iid, row.id)) {
            *out = row.service;
            return 0;
        }
    }
    return 0x80004002;
}
