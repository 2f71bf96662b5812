// The time field of a log record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/wideChar.h"

// A time as "2026-11-16 14:03:07", always in UTC+8, whatever the machine's time zone says: records of a fleet are
// compared by it. Holds its text in itself.
class LogTime {
public:
    // In seconds since the start of 1970, UTC.
    explicit LogTime(int64_t secondsSince1970);

    std::basic_string_view<WideChar> View() const { return {m_text, m_length}; }

private:
    void AppendYear(int64_t year);
    void AppendTwoDigits(WideChar separator, unsigned number);

    WideChar m_text[48]; // the longest year has 12 digits and a sign
    size_t m_length = 0;
};

// The present time.
LogTime LogTimestamp();
