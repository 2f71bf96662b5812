#include "library/recordLog.h"

#include <fstream>
#include <system_error>

#include "document/filePath.h"
#include "library/libraries.h"
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
        throw RunError("cannot write into " + Utf8Of(m_path) + ", where the log settings stand: output is lost");
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
        throw LoadError("the library ZelkBase does not let its host write the log records; --no-log does without them");
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
