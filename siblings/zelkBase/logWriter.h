// ILogWriter: writes records to a file.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "serviceObject.h"
#include "zelkBase/logFile.h"

namespace siblings {

// Appends records, as UTF-8 and with one write each, to the file named after the module ("MORD_Recv.log" for
// "MORD_Recv") in the log directory (logDirectory.h), which the constructor determines. Any thread may call any
// operation. A failure never ends the process: the record is lost, and the next one is tried again.
class LogWriter final : public ServiceObject<LogWriter, ILogWriter> {
public:
    // Opens the file at `path`; returns null on failure. Tests replace it.
    using StreamOpener = std::unique_ptr<AppendStream> (*)(const WideString& path);

    explicit LogWriter(const GUID& id = SID_LogWriter, StreamOpener openStream = OpenLogFile);

    // Opens the file of `moduleName`; a further call closes the former file first. Returns RESULT_OK; RESULT_FAILED if
    // the file cannot be opened; RESULT_INVALID_ARGUMENT for a name that is null, empty or not a plain file name
    // (separators, control characters, and the other characters that Windows forbids); RESULT_OUT_OF_MEMORY. Without
    // RESULT_OK no file is open. The second argument is ignored. Takes m_lock.
    int32_t Start(const WideChar* moduleName, uint32_t zero) override;

    // Drops records with a level below `level`, read as a signed number, from now on. Initially 0. Returns RESULT_OK.
    int32_t SetLevel(uint32_t level) override;

    // Writes `text`, which includes its line end; ill-formed UTF-16 becomes U+FFFD. Returns RESULT_OK if the record was
    // written, or dropped for its level. The record is lost for RESULT_NOT_STARTED, RESULT_FAILED (the system did not
    // take all of it), RESULT_OUT_OF_MEMORY, and RESULT_INVALID_ARGUMENT (null). Takes m_lock.
    int32_t WriteRecord(const WideChar* text, int32_t level) override;

private:
    friend ServiceObject;
    ~LogWriter() = default;

    const StreamOpener m_openStream;
    const WideString m_directory;
    std::atomic<int32_t> m_level{0};

    std::mutex m_lock; // guards the fields below
    std::unique_ptr<AppendStream> m_stream;
    bool m_endsInPartialRecord = false; // the file ends with a part of a record
};

} // namespace siblings
