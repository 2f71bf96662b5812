#include "decide/recordLog.h"

#include <fstream>
#include <system_error>

#include "decide/libraries.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/privateDirectory.h"
#include "system/runError.h"

namespace mordhost {

RecordLog::SettingsDirectory::SettingsDirectory(bool on) : m_path(MakePrivateDirectory()) {
    std::ofstream settings(m_path / "Zelklog.ini", std::ios::binary);
    settings << "[OUTLOG]\nWriteLog=" << (on ? 1 : 0) << "\nDebugView=0\nLogLevel=0\n" << std::flush;
    if (!settings) {
        settings.close();
        Remove();
        throw RunError("cannot write the log settings to " + Utf8Of(m_path) + ": output is lost");
    }
}

void RecordLog::SettingsDirectory::Remove() const {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

RecordLog::RecordLog(const ServiceFactory& base, bool on) : m_settings(on) {
    SetEnvironment("ZELK_LOG_DIR", m_settings.Path());
    if (!on) {
        return;
    }
    auto converter = base.Make<ITextConverter>(SID_TextConverter);
    m_hostLog = base.Make<IHostLog>(SID_HostLog);
    if (!converter || !m_hostLog) {
        throw LoadError(
            "the library ZelkBase does not accept a log writer of the host; use --no-log to run without log records");
    }
    m_collector = LogCollector::Make(std::move(converter));
    m_hostLog->SetLogWriter(m_collector.get());
}

RecordLog::~RecordLog() {
    if (m_hostLog) {
        m_hostLog->SetLogWriter(nullptr);
    }
}

void RecordLog::Take(WrittenRecords& records) {
    if (m_collector) {
        m_collector->Take(records);
    } else {
        records.Clear();
    }
}

} // namespace mordhost
