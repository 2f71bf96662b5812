#include "library/recordLog.h"

#include <random>
#include <system_error>

#include "document/filePath.h"
#include "system/hostSystem.h"
#include "system/runError.h"

namespace mordhost {

namespace {

constexpr auto logFileName = "MORD_Recv.log"; // after the name under which the library starts its logger
constexpr uint64_t longestFile = 4U << 20U;   // so that a long run does not fill the disk

// A new directory that only this user can enter.
std::filesystem::path MakePrivateDirectory() {
    std::random_device random;
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    for (int attempt = 0; attempt < 100 && !error; ++attempt) {
        const std::filesystem::path directory = parent / ("mordhost-" + std::to_string(random()));
        if (std::filesystem::create_directory(directory, error)) {
            std::filesystem::permissions(directory, std::filesystem::perms::owner_all, error);
            return directory;
        }
    }
    throw RunError("cannot make a directory for log records in " + Utf8Of(parent) +
                   (error ? ": " + error.message() : ""));
}

} // namespace

RecordLog::RecordLog(bool on) : m_directory(MakePrivateDirectory()), m_file(m_directory / logFileName) {
    std::ofstream(m_directory / "Zelklog.ini", std::ios::binary)
        << "[OUTLOG]\nWriteLog=" << (on ? 1 : 0) << "\nDebugView=0\nLogLevel=0\n";
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
