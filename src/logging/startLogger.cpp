#include "logging/startLogger.h"

#include <string>

#include "frame/serviceLookup.h"
#include "logging/logState.h"
#include "platform/platform.h"

namespace {

struct LogSettings {
    bool writeLog;
    bool debugView;
    uint32_t level;
};

LogSettings ReadSettings(const std::basic_string<WideChar>& path) {
    const auto read = [&path](const WideChar* key) {
        return platform::GetPrivateProfileIntW(WIDE("OUTLOG"), key, 0, path.c_str());
    };
    LogSettings settings{};
    settings.writeLog = read(WIDE("WriteLog")) != 0;
    settings.debugView = read(WIDE("DebugView")) != 0;
    settings.level = read(WIDE("LogLevel"));
    return settings;
}

// The directory ends in its separator. Without a directory the system gets the bare file name.
std::basic_string<WideChar> IniPath(ILogConfig* config) {
    std::basic_string<WideChar> path;
    if (config->GetConfigText(LOG_CONFIG_DIRECTORY, 0) != nullptr) {
        // The base library expects a second call for the value; either result can be null.
        if (const WideChar* const directory = config->GetConfigText(LOG_CONFIG_DIRECTORY, 0)) {
            path = directory;
        }
    }
    return path + WIDE("Zelklog.ini");
}

} // namespace

bool StartLogger(const WideChar* moduleName) {
    const auto factory = FindBaseModuleFactory();
    if (factory == nullptr) {
        return false;
    }
    ServicePointer<ILogConfig> config;
    config.Create(factory, SID_LogConfig);
    if (!config) {
        return false;
    }
    const LogSettings settings = ReadSettings(IniPath(config.Get()));
    LogDebugViewEnabled = settings.debugView; // remains even if the rest fails, by design
    if (!settings.writeLog || moduleName == nullptr) {
        return true;
    }
    LoggerObject.Create(factory, SID_LogWriter);
    if (!LoggerObject) {
        return false;
    }
    LoggerObject->SetLevel(settings.level);
    LoggerObject->Start(moduleName, 0);
    LogFileEnabled = true;
    return true;
}
