// The library's log records, as they are written.
//
// The host is the library's logger: it gives the base library a writer of its own (zelkBase/hostLog.h) and keeps the
// records in memory. Whether there are any is said by "Zelklog.ini", which the base library reads from the directory
// that ZELK_LOG_DIR names. The host makes a private one, so that no log settings of the machine have a part in it.
#pragma once

#include <filesystem>

#include "library/logCollector.h"
#include "zelkBase/hostLog.h"

namespace mordhost {

class RecordLog {
public:
    // Makes the directory, names it in the environment and gives the base library, whose factory `base` is, the writer;
    // to be called before the library is initialised. With `on` false the library is told to write nothing, and `base`
    // is not asked. Throws RunError, and LoadError when the base library does not let its host write the records.
    RecordLog(const ServiceFactory& base, bool on);

    // The library must have been initialised for the last time. It may still hold the writer.
    ~RecordLog();
    RecordLog(const RecordLog&) = delete;
    RecordLog& operator=(const RecordLog&) = delete;

    // Gives the records that were written since the last such call in `records`, in the place of what it holds.
    void Take(WrittenRecords& records);

private:
    // The private directory with the settings in it.
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
    Service<LogCollector> m_collector; // null when the library writes nothing
    Service<IHostLog> m_hostLog;       // likewise
};

} // namespace mordhost
