// What a log site writes a record into.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

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
    bool HasText() const { return m_buffer.HasText(); }

    // Appends `text` as an insertion does, without what a stream does around each.
    void Append(std::basic_string_view<WideChar> text);

    // The text in the buffer, valid until the next insertion. Throws nothing.
    const WideChar* Text() { return m_buffer.Text(); }

    // Empties the buffer and clears the state.
    void Reset();

private:
    // A usual record stands in the object itself. There is always room for the NUL.
    class Buffer : public std::basic_streambuf<WideChar> {
    public:
        Buffer() { setp(std::begin(m_first), std::end(m_first) - 1); }

        bool HasText() const { return pptr() != pbase(); }
        const WideChar* Text() {
            *pptr() = WideChar{};
            return pbase();
        }
        void Clear() { setp(pbase(), epptr()); }

        // Puts in what there is room for already; false, with nothing put in, when there is not enough.
        bool PutQuickly(std::basic_string_view<WideChar> text) {
            if (static_cast<size_t>(epptr() - pptr()) < text.size() || text.size() > quickly) {
                return false;
            }
            std::copy_n(text.data(), text.size(), pptr());
            pbump(static_cast<int>(text.size()));
            return true;
        }

    protected:
        std::streamsize xsputn(const WideChar* text, std::streamsize length) override;
        int_type overflow(int_type unit) override;

    private:
        // Counts what has been put in.
        void Advance(size_t length);

        // Makes room for `length` more. False, with nothing changed, when there is no memory for it.
        bool Grow(size_t length);

        static constexpr size_t quickly = 4096; // a length of which no counter runs over

        WideChar m_first[512];
        std::unique_ptr<WideChar[]> m_larger;
    };

    Buffer m_buffer;
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
    LogStream& operator<<(std::basic_string_view<WideChar> text);
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
