// Redirects the library's log records into memory.
//
// The host passes its own log writer to the base library (zelkBase/hostLog.h). The base library reads from
// "Zelklog.ini", in the directory that ZELK_LOG_DIR names, whether to log at all. The host creates a private directory
// with that file, so that the log settings of the machine have no effect.
#pragma once

#include <filesystem>

#include "decide/logCollector.h"
#include "zelkBase/hostLog.h"

namespace mordhost {

class RecordLog {
public:
    // Creates the directory, sets ZELK_LOG_DIR and passes the writer to the base library, whose factory is `base`. Call
    // it before the library is initialised. If `on` is false, the library does not log and `base` is not used. Throws
    // RunError, and LoadError if the base library does not accept a log writer.
    RecordLog(const ServiceFactory& base, bool on);

    // The library may still hold the writer, but must not be initialised again.
    ~RecordLog();
    RecordLog(const RecordLog&) = delete;
    RecordLog& operator=(const RecordLog&) = delete;

    // Replaces `records` by the records since the last call.
    void Take(WrittenRecords& records);

private:
    // The private directory with the log settings. Removes it at the end.
    class SettingsDirectory {
    public:
        explicit SettingsDirectory(bool on);
        ~SettingsDirectory() { Remove(); }
        SettingsDirectory(const SettingsDirectory&) = delete;
        SettingsDirectory& operator=(const SettingsDirectory&) = delete;

        const std::filesystem::path& Path() const { return m_path; }

    private:
        void Remove() const;

        std::filesystem::path m_path;
    };

    SettingsDirectory m_settings;
    Service<LogCollector> m_collector; // null if the library does not log
    Service<IHostLog> m_hostLog;       // as above
};

} // namespace mordhost
