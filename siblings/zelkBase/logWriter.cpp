#include "zelkBase/logWriter.h"

#include <algorithm>
#include <string>

#include "serviceGuard.h"
#include "zelkBase/logDirectory.h"

namespace siblings {

namespace {

// A record as UTF-8. A usual one (up to 512 units) needs no heap memory.
class RecordBytes {
public:
    explicit RecordBytes(const WideChar* record) {
        // Most records are ASCII: one pass finds their end and converts them.
        size_t length = 0;
        while (length < sizeof m_inline && static_cast<uint32_t>(record[length]) - 1 < 0x7F) {
            m_inline[length] = static_cast<char>(record[length]);
            ++length;
        }
        if (length < sizeof m_inline && record[length] == WideChar{}) {
            m_bytes = {m_inline, length};
            return;
        }
        const WideView text(record);
        if (Utf8Capacity(text.size()) <= sizeof m_inline) {
            m_bytes = {m_inline, WriteUtf8(text, m_inline)};
        } else {
            m_heap = ToUtf8(text);
            m_bytes = m_heap;
        }
    }
    RecordBytes(const RecordBytes&) = delete;
    RecordBytes& operator=(const RecordBytes&) = delete;

    std::string_view View() const { return m_bytes; }

private:
    char m_inline[1536];
    std::string m_heap;
    std::string_view m_bytes;
};

bool IsFileName(WideView name) {
    constexpr WideView forbidden = WIDE("/\\:*?\"<>|");
    return !name.empty() && std::none_of(name.begin(), name.end(), [forbidden](WideChar unit) {
        return unit < WideChar{0x20} || forbidden.find(unit) != WideView::npos;
    });
}

} // namespace

LogWriter::LogWriter(const GUID& id, StreamOpener openStream)
    : ServiceObject(id), m_openStream(openStream), m_directory(LogDirectory()) {}

int32_t LogWriter::Start(const WideChar* moduleName, uint32_t) {
    return Signed(Guarded([this, moduleName] {
        const std::lock_guard guard(m_lock);
        m_stream.reset();
        m_endsInPartialRecord = false;
        if (moduleName == nullptr || !IsFileName(moduleName)) {
            return RESULT_INVALID_ARGUMENT;
        }
        if (!m_directory.empty()) {
            m_stream = m_openStream(m_directory + moduleName + WIDE(".log"));
        }
        return m_stream ? RESULT_OK : RESULT_FAILED;
    }));
}

int32_t LogWriter::SetLevel(uint32_t level) {
    m_level = static_cast<int32_t>(level);
    return Signed(RESULT_OK);
}

int32_t LogWriter::WriteRecord(const WideChar* text, int32_t level) {
    if (text == nullptr) {
        return Signed(RESULT_INVALID_ARGUMENT);
    }
    if (level < m_level) {
        return Signed(RESULT_OK);
    }
    return Signed(Guarded([this, text] {
        const RecordBytes bytes(text); // outside the lock
        const std::lock_guard guard(m_lock);
        if (!m_stream) {
            return RESULT_NOT_STARTED;
        }
        std::string_view record = bytes.View();
        std::string onNewLine;
        if (m_endsInPartialRecord) {
            onNewLine = "\r\n" + std::string(record); // a record starts on its own line
            record = onNewLine;
        }
        const size_t written = m_stream->Append(record);
        if (written == record.size()) {
            m_endsInPartialRecord = false;
            return RESULT_OK;
        }
        m_endsInPartialRecord = m_endsInPartialRecord || written != 0;
        return RESULT_FAILED;
    }));
}

} // namespace siblings
