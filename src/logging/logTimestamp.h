// The time field of a log record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/wideChar.h"

// A time as "2026-11-16 14:03:07", always in UTC+8, whatever the time zone of the machine: the records of all machines
// are comparable. Stores its text in the object. Any thread may create one; throws nothing.
class LogTime {
public:
    // `secondsSince1970` is a count of seconds since 1970-01-01 00:00 UTC; it can be negative.
    explicit LogTime(int64_t secondsSince1970);

    std::basic_string_view<WideChar> View() const { return {m_text, m_length}; }

private:
    void AppendYear(int64_t year);
    void AppendTwoDigits(WideChar separator, unsigned number);

    WideChar m_text[48]; // the longest year has 12 digits and a sign
    size_t m_length = 0;
};

// Returns the current time.
LogTime LogTimestamp();
