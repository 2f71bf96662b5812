#include "library/recordLog.h"

#include <system_error>

#include "document/filePath.h"
#include "system/hostSystem.h"
#include "system/privateDirectory.h"
#include "system/runError.h"

namespace mordhost {

namespace {

constexpr auto logFileName = "MORD_Recv.log"; // after the name under which the library starts its logger
constexpr uint64_t longestFile = 4U << 20U;   // so that a long run does not fill the disk

} // namespace

RecordLog::RecordLog(bool on) : m_directory(MakePrivateDirectory()), m_file(m_directory / logFileName) {
    std::ofstream settings(m_directory / "Zelklog.ini", std::ios::binary);
    settings << "[OUTLOG]\nWriteLog=" << (on ? 1 : 0) << "\nDebugView=0\nLogLevel=0\n" << std::flush;
    if (!settings) {
        settings.close();
        Remove();
        throw RunError("cannot write into " + Utf8Of(m_directory) + ", where the log records are kept: output is lost");
    }
    SetEnvironment("ZELK_LOG_DIR", m_directory);
}

RecordLog::~RecordLog() {
    Remove();
}

std::string RecordLog::Take() {
    if (!m_stream.is_open()) {
        m_stream.open(m_file, std::ios::binary);
    }
    std::string text;
    char block[16384];
    m_stream.clear();
    m_stream.seekg(static_cast<std::streamoff>(m_read)); // a runtime may remember that the end was reached
    while (m_stream.read(block, sizeof block), m_stream.gcount() > 0) {
        text.append(block, static_cast<size_t>(m_stream.gcount()));
    }
    m_read += text.size();
    if (m_read > longestFile) {
        StartAfresh();
    }
    return text;
}

// The writer appends, wherever the end is.
void RecordLog::StartAfresh() {
    std::error_code error;
    std::filesystem::resize_file(m_file, 0, error);
    if (!error) {
        m_read = 0;
    }
}

void RecordLog::Remove() {
    m_stream.close();
    std::error_code ignored;
    std::filesystem::remove_all(m_directory, ignored);
}

} // namespace mordhost
