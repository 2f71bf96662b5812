// ILogWriter: records to a file.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "serviceObject.h"
#include "zelkBase/logFile.h"

namespace siblings {

// Appends records, as UTF-8 and in one write each, to the file that is named after the module ("MORD_Recv.log" for
// "MORD_Recv") and stands in the log directory (logDirectory.h), which is looked up when the object is made. Any thread
// may call any operation. Nothing here ends the process: what cannot be written is lost, and the next record is tried
// again.
class LogWriter final : public ServiceObject<LogWriter, ILogWriter> {
public:
    using StreamOpener = std::unique_ptr<AppendStream> (*)(const WideString& path);

    explicit LogWriter(const GUID& id = SID_LogWriter, StreamOpener openStream = OpenLogFile);

    // Opens the file of `moduleName`; called again, closes the former file and goes on with the new one. Returns
    // RESULT_OK, RESULT_FAILED when the file cannot be opened, RESULT_INVALID_ARGUMENT for a name that is null, empty
    // or not one file name (separators, control characters and the rest that Windows keeps out of names),
    // RESULT_OUT_OF_MEMORY. Without RESULT_OK no file is open. The second argument plays no part.
    int32_t Start(const WideChar* moduleName, uint32_t zero) override;

    // Records whose level is below `level`, read as a signed number, are dropped; 0 at first. Returns RESULT_OK.
    int32_t SetLevel(uint32_t level) override;

    // Writes `text` as it stands, its line end included; ill-formed UTF-16 becomes U+FFFD. Returns RESULT_OK when the
    // record was written, or dropped for its level; RESULT_NOT_STARTED, RESULT_FAILED (the system did not take all of
    // it) and RESULT_OUT_OF_MEMORY when it is lost, RESULT_INVALID_ARGUMENT for null.
    int32_t WriteRecord(const WideChar* text, int32_t level) override;

private:
    friend ServiceObject;
    ~LogWriter() = default;

    const StreamOpener m_openStream;
    const WideString m_directory;
    std::atomic<int32_t> m_level{0};

    std::mutex m_lock; // guards what follows
    std::unique_ptr<AppendStream> m_stream;
    bool m_torn = false; // the last record to reach the file did so in part
};

} // namespace siblings
