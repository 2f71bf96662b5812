// The library's log records, as they are written.
//
// The base library reads "Zelklog.ini" from, and writes the log files into, the directory that ZELK_LOG_DIR names. The
// host makes a private one, so that no log settings or log files of the machine have a part in it, and reads the
// records back.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace mordhost {

class RecordLog {
public:
    // Makes the directory and names it in the environment; to be called before the library is initialised. With `on`
    // false the library is told to write nothing. Throws RunError.
    explicit RecordLog(bool on);
    ~RecordLog();
    RecordLog(const RecordLog&) = delete;
    RecordLog& operator=(const RecordLog&) = delete;

    // The records that were written since the last such call, in UTF-8, line ends included.
    std::string Take();

    // Removes the directory, which the library must have let go of.
    void Remove();

private:
    void StartAfresh();

    std::filesystem::path m_directory;
    std::filesystem::path m_file;
    std::ifstream m_stream;
    uint64_t m_read = 0; // bytes of the file so far
};

} // namespace mordhost
