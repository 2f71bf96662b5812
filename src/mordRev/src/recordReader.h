// Reading the values of a record. A value that cannot be had gives its default, with nothing logged.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "frame/interfaces.h"
#include "mordRev/src/mordRevTypes.h"

// 0 when the read fails, even if the record wrote something.
inline uint32_t ReadInt32(IEventRecord* record, const char* name) {
    int32_t value = 0;
    return record->GetInt32(name, &value) == RECORD_DELIVERED ? static_cast<uint32_t>(value) : 0;
}

// What the record left; the result code plays no part.
inline int64_t ReadInt64(IEventRecord* record, const char* name) {
    int64_t value = 0;
    record->GetInt64(name, &value);
    return value;
}

// The text up to its first NUL, or empty. A record may leave out the NUL, or write nothing: the text never reaches
// beyond the buffer, which is cleared first.
inline std::string ReadString(IEventRecord* record, const char* name) {
    int32_t size = 0;
    if (record->GetString(name, nullptr, &size) != RECORD_BUFFER_NEEDED || size <= 0) {
        return {};
    }
    const auto capacity = static_cast<size_t>(size);
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    // calloc, since a size that cannot be had is no error here, and a huge one must not cost its clearing.
    const std::unique_ptr<char, Free> buffer(static_cast<char*>(std::calloc(capacity, 1)));
    if (buffer == nullptr || record->GetString(name, buffer.get(), &size) != RECORD_DELIVERED) {
        return {};
    }
    const void* const end = std::memchr(buffer.get(), '\0', capacity);
    return {buffer.get(),
            end == nullptr ? capacity : static_cast<size_t>(static_cast<const char*>(end) - buffer.get())};
}
