#include "logging/logStream.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <new>

#include "logging/logState.h"
#include "platform/platform.h"
#include "text/textConvert.h"

namespace Base {

CSmartStream::CSmartStream() : std::basic_ostream<WideChar>(nullptr) {
    rdbuf(&m_buffer);
}

void CSmartStream::Append(std::basic_string_view<WideChar> text) {
    if (good() && m_buffer.PutQuickly(text)) {
        return;
    }
    const auto length = static_cast<std::streamsize>(text.size());
    if (good() && m_buffer.sputn(text.data(), length) != length) {
        setstate(badbit);
    }
}

void CSmartStream::Reset() {
    m_buffer.Clear();
    clear();
}

std::streamsize CSmartStream::Buffer::xsputn(const WideChar* text, std::streamsize length) {
    if (epptr() - pptr() < length && !Grow(static_cast<size_t>(length))) {
        return 0;
    }
    std::copy_n(text, length, pptr());
    Advance(static_cast<size_t>(length));
    return length;
}

CSmartStream::Buffer::int_type CSmartStream::Buffer::overflow(int_type unit) {
    if (!traits_type::eq_int_type(unit, traits_type::eof())) {
        const WideChar character = traits_type::to_char_type(unit);
        if (xsputn(&character, 1) == 0) {
            return traits_type::eof();
        }
    }
    return traits_type::not_eof(unit);
}

void CSmartStream::Buffer::Advance(size_t length) {
    for (constexpr size_t most = std::numeric_limits<int>::max(); length > most; length -= most) {
        pbump(static_cast<int>(most));
    }
    pbump(static_cast<int>(length));
}

bool CSmartStream::Buffer::Grow(size_t length) {
    const auto used = static_cast<size_t>(pptr() - pbase());
    const size_t capacity = 2 * (used + length);
    std::unique_ptr<WideChar[]> larger(new (std::nothrow) WideChar[capacity + 1]);
    if (larger == nullptr) {
        return false;
    }
    std::copy_n(pbase(), used, larger.get());
    setp(larger.get(), larger.get() + capacity);
    m_larger = std::move(larger);
    Advance(used);
    return true;
}

} // namespace Base

namespace {

// A number in decimal digits. std::basic_ostream<char16_t> has no number formatting.
class Decimal {
public:
    template <typename Number>
    explicit Decimal(Number number) {
        char digits[capacity];
        m_length = static_cast<size_t>(std::to_chars(std::begin(digits), std::end(digits), number).ptr - digits);
        std::copy_n(digits, m_length, m_digits);
    }

    std::basic_string_view<WideChar> View() const { return {m_digits, m_length}; }

private:
    static constexpr size_t capacity = 16;

    WideChar m_digits[capacity];
    size_t m_length;
};

} // namespace

LogStream::LogStream(int32_t recordLevel) : level(recordLevel) {}

LogStream::~LogStream() {
    if (!stream.HasText()) {
        return;
    }
    const WideChar* const text = stream.Text();
    platform::WriteStandardOutput(text);
    platform::OutputDebugStringW(text);
}

LogStream& LogStream::operator<<(const WideChar* text) {
    if (text == nullptr) {
        stream.setstate(std::ios_base::badbit);
        return *this;
    }
    return *this << std::basic_string_view<WideChar>(text);
}

LogStream& LogStream::operator<<(std::basic_string_view<WideChar> text) {
    stream.Append(text);
    return *this;
}

LogStream& LogStream::operator<<(const char* text) {
    return *this << WideText(text).View();
}

LogStream& LogStream::operator<<(const std::string& text) {
    return *this << text.c_str();
}

LogStream& LogStream::operator<<(int32_t number) {
    return *this << Decimal(number).View();
}

LogStream& LogStream::operator<<(uint32_t number) {
    return *this << Decimal(number).View();
}

LogStream& LogStream::operator<<(bool value) {
    return *this << (value ? WIDE("1") : WIDE("0"));
}

void LogStream::EndRecord() {
    constexpr std::basic_string_view<WideChar> lineEnd = WIDE("\r\n");
    *this << lineEnd;
    const WideChar* const text = stream.Text();
    if (LogDebugViewEnabled) {
        platform::OutputDebugStringW(text);
    }
    if (LoggerObject && LogFileEnabled) {
        LoggerObject->WriteRecord(text, level);
    }
    stream.Reset();
}
