// What a log site writes a record into.
#pragma once

#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>

#include "platform/wideChar.h"

constexpr int32_t LOG_LEVEL_TRACE = 30;
constexpr int32_t LOG_LEVEL_ERROR = 35;

namespace Base {

// Wide output stream over a buffer of its own, in which a record grows. It has no exception mask: an insertion that
// fails leaves it in a failed state until it is reset.
class CSmartStream : public std::basic_ostream<WideChar> {
public:
    CSmartStream();

    // Whether text stands in the buffer.
    bool HasText() const;

    // The text in the buffer, kept until the next call.
    const WideChar* KeepText();

    // The text in the buffer, valid until the next insertion; null when there is no memory for its NUL. Throws nothing.
    const WideChar* PeekText();

    // Empties the buffer and clears the state.
    void Reset();

private:
    class Buffer : public std::basic_stringbuf<WideChar> {
    public:
        const WideChar* Begin() const { return pbase(); }
    };

    Buffer m_buffer;
    std::basic_string<WideChar> m_kept;
};

} // namespace Base

// One record at a time, of one level. Belongs to one function and one thread.
//
// Inserted wide text goes in as it stands, narrow text (UTF-8, up to its first NUL; null is empty) through Utf8ToWide,
// numbers in decimal, a bool as 1 or 0.
class LogStream {
public:
    explicit LogStream(int32_t level);

    // Text of a record that was begun and never ended, as when an exception passes the site, goes to the standard wide
    // output stream and to the debug output, whatever the log state says.
    ~LogStream();

    LogStream(const LogStream&) = delete;
    LogStream& operator=(const LogStream&) = delete;

    LogStream& operator<<(const WideChar* text);
    LogStream& operator<<(const char* text);
    LogStream& operator<<(const std::string& text);
    LogStream& operator<<(int32_t number);
    LogStream& operator<<(uint32_t number);
    LogStream& operator<<(bool value);

    // Ends the record with carriage return and line feed, gives it to the sinks that the log state names, and makes the
    // stream ready for the next one.
    void EndRecord();

private:
    int32_t level;
    Base::CSmartStream stream;
};
