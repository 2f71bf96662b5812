#include "kit/system/quietSystem.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "frame/interfaces.h"
#include "kit/siblings/plainServices.h"
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "platform/platform.h"

void (*kit::takeRecord)(const WideChar* text, int32_t level) = nullptr;

namespace {

int module;

class Finder final : public kit::PlainService<IModuleFinder> {
public:
    void* FindModule(const WideChar*) override { return &module; }
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
    const WideChar* GetConfigText(uint32_t, uint32_t) override { return WIDE(""); }
};

class LogWriter final : public kit::PlainService<ILogWriter> {
public:
    int32_t Start(const WideChar*, uint32_t) override { return 0; }
    int32_t SetLevel(uint32_t) override { return 0; }
    int32_t WriteRecord(const WideChar* text, int32_t level) override {
        if (kit::takeRecord != nullptr) {
            kit::takeRecord(text, level);
        }
        return 0;
    }
};

Finder finder;
kit::ByteConverter converter;
MachineId machineId;
LogConfig logConfig;
LogWriter logWriter;
kit::PlainService<ISmartUnknown> other;

extern "C" uint32_t MORD_CDECL CreateService(const GUID* id, void** out) {
    const auto is = [id](const GUID& service) { return std::memcmp(id, &service, sizeof service) == 0; };
    if (is(SID_ModuleFinder)) {
        *out = static_cast<IModuleFinder*>(&finder);
    } else if (is(SID_TextConverter)) {
        *out = static_cast<ITextConverter*>(&converter);
    } else if (is(SID_MachineId)) {
        *out = static_cast<IMachineIdService*>(&machineId);
    } else if (is(SID_LogConfig)) {
        *out = static_cast<ILogConfig*>(&logConfig);
    } else if (is(SID_LogWriter)) {
        *out = static_cast<ILogWriter*>(&logWriter);
    } else {
        *out = static_cast<ISmartUnknown*>(&other);
    }
    return RESULT_OK;
}

} // namespace

namespace platform {

ModuleHandle GetModuleHandleW(const WideChar*) {
    return &module;
}

void* GetProcAddress(ModuleHandle, const char*) {
    return reinterpret_cast<void*>(CreateService);
}

uint32_t GetPrivateProfileIntW(const WideChar*, const WideChar* key, int32_t, const WideChar*) {
    return std::basic_string_view<WideChar>(key) == WIDE("WriteLog") && (!LoggerObject || LogFileEnabled) ? 1 : 0;
}

void OutputDebugStringW(const WideChar*) {}

void WriteStandardOutput(const WideChar*) {}

uint32_t GetCurrentThreadId() {
    return 1;
}

// The same bytes in every process, so that a run can be repeated.
bool FillRandom(void* buffer, size_t size) {
    uint32_t state = 1;
    for (auto* at = static_cast<unsigned char*>(buffer); size != 0; --size) {
        state = state * 1664525 + 1013904223;
        *at++ = static_cast<unsigned char>(state >> 24);
    }
    return true;
}

uint32_t GetLastError() {
    return 0;
}

} // namespace platform

// No process is found.
bool CMordRecv::GetProcPathByPid(uint32_t pid, std::string* path) {
    path->clear();
    LOG_ERROR(WIDE("Open process failed!") << WIDE(" pid=") << pid << WIDE(" ,lasterror=N"));
    return false;
}
