#include "logging/logStream.h"

#include <charconv>

#include "logging/logState.h"
#include "platform/platform.h"
#include "text/textConvert.h"

namespace Base {

CSmartStream::CSmartStream() : std::basic_ostream<WideChar>(nullptr) {
    init(&m_buffer);
}

bool CSmartStream::HasText() const {
    return !m_buffer.view().empty();
}

const WideChar* CSmartStream::KeepText() {
    m_kept = m_buffer.view();
    return m_kept.c_str();
}

const WideChar* CSmartStream::PeekText() {
    clear();
    put(WideChar{});
    return good() ? m_buffer.Begin() : nullptr;
}

void CSmartStream::Reset() {
    m_buffer.str({});
    clear();
}

} // namespace Base

namespace {

// Digits are put in by hand: a stream of char16_t has no number formatting.
template <typename Number>
void InsertDecimal(Base::CSmartStream& stream, Number number) {
    char digits[16] = {};
    const char* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    for (const char* digit = digits; digit != end; ++digit) {
        stream.put(static_cast<WideChar>(*digit));
    }
}

} // namespace

LogStream::LogStream(int32_t recordLevel) : level(recordLevel) {}

LogStream::~LogStream() {
    if (!stream.HasText()) {
        return;
    }
    if (const WideChar* const text = stream.PeekText()) {
        platform::WriteStandardOutput(text);
        platform::OutputDebugStringW(text);
    }
}

LogStream& LogStream::operator<<(const WideChar* text) {
    stream << text;
    return *this;
}

LogStream& LogStream::operator<<(const char* text) {
    stream << Utf8ToWide(text).c_str();
    return *this;
}

LogStream& LogStream::operator<<(const std::string& text) {
    return *this << text.c_str();
}

LogStream& LogStream::operator<<(int32_t number) {
    InsertDecimal(stream, number);
    return *this;
}

LogStream& LogStream::operator<<(uint32_t number) {
    InsertDecimal(stream, number);
    return *this;
}

LogStream& LogStream::operator<<(bool value) {
    stream.put(static_cast<WideChar>(value ? '1' : '0'));
    return *this;
}

void LogStream::EndRecord() {
    stream << WIDE("\r\n");
    const WideChar* const text = stream.KeepText();
    if (LogDebugViewEnabled) {
        platform::OutputDebugStringW(text);
    }
    if (LoggerObject && LogFileEnabled) {
        LoggerObject->WriteRecord(text, level);
    }
    stream.Reset();
}
