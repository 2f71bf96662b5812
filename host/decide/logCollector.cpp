#include "decide/logCollector.h"

#include <cstring>
#include <exception>
#include <utility>

#include "frame/values.h"

namespace mordhost {

namespace {

constexpr uint32_t utf8CodePage = 65001;
constexpr int32_t lost = 1;
constexpr size_t longestCharacter = 3; // the most UTF-8 bytes for one UTF-16 unit

} // namespace

Service<LogCollector> LogCollector::Make(Service<ITextConverter> converter) {
    return Service<LogCollector>(new LogCollector(std::move(converter)));
}

void LogCollector::Take(WrittenRecords& records) {
    std::swap(m_records, records); // which reuses the memory of both
    m_records.Clear();
}

int32_t LogCollector::Release() {
    const int32_t left = --m_references;
    if (left == 0) {
        delete this;
    }
    return left;
}

uint32_t LogCollector::QueryInterface(const GUID* iid, void** out) {
    if (std::memcmp(iid, &SID_LogWriter, sizeof(GUID)) != 0) {
        return RESULT_NO_INTERFACE;
    }
    AddRef();
    *out = static_cast<ILogWriter*>(this);
    return RESULT_OK;
}

int32_t LogCollector::WriteRecord(const WideChar* text, int32_t) {
    const size_t begin = m_records.text.size();
    try {
        Append(text);
        return 0;
    } catch (const std::exception&) { // out of memory
        m_records.text.resize(begin);
        return lost;
    }
}

void LogCollector::Append(const WideChar* text) {
    const size_t length = std::char_traits<WideChar>::length(text);
    const size_t capacity = longestCharacter * length + 1; // with the NUL
    if (m_converted.size() < capacity) {
        m_converted.resize(capacity);
    }
    TextConversionRequest request{};
    request.codePage = utf8CodePage;
    request.sourceLength = static_cast<uint32_t>(length);
    request.destinationCapacity = static_cast<uint32_t>(m_converted.size());
    request.source = text;
    request.destination = m_converted.data();
    m_converted.front() = '\0'; // in case the converter writes nothing
    m_converter->Convert(CONVERT_WIDE_TO_NARROW, &request);
    m_records.text += m_converted.data();
    m_records.ends.push_back(m_records.text.size());
}

} // namespace mordhost
