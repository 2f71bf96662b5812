// The stream that a log site writes a record to.
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

// A wide output stream with its own buffer, which holds one record. Its exception mask is empty: a failed insertion,
// even for lack of memory, leaves it in a failed state until Reset.
class CSmartStream : public std::basic_ostream<WideChar> {
public:
    CSmartStream();

    // Returns whether the buffer has text.
    bool HasText() const { return m_buffer.HasText(); }

    // Appends `text` like an insertion, but without a sentry and formatting. Throws nothing.
    void Append(std::basic_string_view<WideChar> text);

    // Returns the text, NUL-terminated, valid until the next insertion. Throws nothing.
    const WideChar* Text() { return m_buffer.Text(); }

    // Clears the buffer and the error state. Keeps the memory.
    void Reset();

private:
    // A record of up to 511 characters is in the object itself, a longer one on the heap. There is always room for the
    // NUL.
    class Buffer : public std::basic_streambuf<WideChar> {
    public:
        Buffer() { setp(std::begin(m_first), std::end(m_first) - 1); }

        bool HasText() const { return pptr() != pbase(); }
        const WideChar* Text() {
            *pptr() = WideChar{};
            return pbase();
        }
        void Clear() { setp(pbase(), epptr()); }

        // Appends `text` if the present buffer has room for it and it is not very long. Otherwise returns false and
        // changes nothing.
        bool PutQuickly(std::basic_string_view<WideChar> text) {
            if (static_cast<size_t>(epptr() - pptr()) < text.size() || text.size() > mostQuick) {
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
        // Advances the end of the text by `length` characters.
        void Advance(size_t length);

        // Makes room for `length` more characters. Returns false, with nothing changed, if memory runs out.
        bool Grow(size_t length);

        static constexpr size_t mostQuick = 4096; // fits the argument of pbump

        WideChar m_first[512];
        std::unique_ptr<WideChar[]> m_larger;
    };

    Buffer m_buffer;
};

} // namespace Base

// Builds records of one level, one after the other. Belongs to one function and one thread.
//
// Insertions: wide text unchanged; narrow text (UTF-8, up to its first NUL; null counts as empty) through the text
// converter, so that it is empty without one; numbers in decimal; a bool as 1 or 0. A null wide text puts the stream
// into the failed state. Only narrow text can throw: std::bad_alloc.
class LogStream {
public:
    explicit LogStream(int32_t level);

    // Writes the text of a record that was begun but not ended, as when an exception leaves the log site, to std::wcout
    // and the debug output, whatever the log state is.
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

    // Ends the record with carriage return and line feed, passes it to the outputs that the log state enables, and
    // resets the stream. Their failures are ignored.
    void EndRecord();

private:
    int32_t level;
    Base::CSmartStream stream;
};
