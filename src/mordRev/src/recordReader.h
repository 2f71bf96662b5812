// Reads the values of a record. A value that the record does not deliver gives its default; nothing is logged. The
// functions run on the thread of the event and call into the host.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "frame/interfaces.h"
#include "frame/values.h"
#include "mordRev/src/plainText.h"

// Returns the value, or 0 if the read fails, even if the record wrote something.
inline uint32_t ReadInt32(IEventRecord* record, const char* name) {
    int32_t value = 0;
    return record->GetInt32(name, &value) == RECORD_DELIVERED ? static_cast<uint32_t>(value) : 0;
}

// Returns what the record stored, initially 0; the result code is ignored, by design.
inline int64_t ReadInt64(IEventRecord* record, const char* name) {
    int64_t value = 0;
    record->GetInt64(name, &value);
    return value;
}

// A text of a record, up to its first NUL; empty if the record does not deliver one or the buffer cannot be allocated.
// A record can omit the NUL or write nothing: the buffer is cleared first, and the text never exceeds the size that the
// record requested.
//
// Texts of less than 48 bytes (guids, types, addresses) are in the object itself; longer ones use the heap. A view is
// valid until the next Read.
class RecordText {
public:
    RecordText() = default;
    RecordText(IEventRecord* record, const char* name) { Read(record, name); }
    RecordText(const RecordText&) = delete;
    RecordText& operator=(const RecordText&) = delete;

    void Read(IEventRecord* record, const char* name) {
        m_text = m_short;
        m_short[0] = '\0';
        m_length = 0;
        int32_t size = 0;
        if (record->GetString(name, nullptr, &size) != RECORD_BUFFER_NEEDED || size <= 0) {
            return;
        }
        const auto capacity = static_cast<size_t>(size);
        char* buffer = m_short;
        if (capacity < sizeof m_short) {
            std::memset(m_short, 0, sizeof m_short);
        } else {
            // calloc: a failure is no error here, and the system clears huge blocks without touching them.
            m_long.reset(static_cast<char*>(std::calloc(capacity + 1, 1)));
            buffer = m_long.get();
        }
        if (buffer == nullptr || record->GetString(name, buffer, &size) != RECORD_DELIVERED) {
            m_short[0] = '\0';
            return;
        }
        buffer[capacity] = '\0';
        m_text = buffer;
        m_length = LengthOfText(buffer, capacity);
    }

    std::string_view View() const { return {m_text, m_length}; }
    const char* Text() const { return m_text; }

private:
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    char m_short[48];
    std::unique_ptr<char, Free> m_long;
    const char* m_text = m_short;
    size_t m_length = 0;
};

// Returns the text as a string. Throws std::bad_alloc.
inline std::string ReadString(IEventRecord* record, const char* name) {
    return std::string(RecordText(record, name).View());
}
