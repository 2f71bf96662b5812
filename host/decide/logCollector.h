// The log writer of the host, which collects the library's records in memory.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "decide/service.h"

namespace mordhost {

// Log records in the order of writing.
struct WrittenRecords {
    std::string text;         // all records, in UTF-8, with line ends
    std::vector<size_t> ends; // the end of each record in `text`

    // Keeps the allocated memory.
    void Clear() {
        text.clear();
        ends.clear();
    }
};

// Reference-counted, because the library may hold its logger until it is unloaded. For use by one thread. The
// operations that the library calls throw nothing.
class LogCollector final : public ILogWriter {
public:
    // Creates a collector with one reference, which converts records to UTF-8 with `converter`.
    static Service<LogCollector> Make(Service<ITextConverter> converter);

    // Replaces `records` by the records since the last call.
    void Take(WrittenRecords& records);

    int32_t AddRef() override { return ++m_references; }
    int32_t Release() override;
    uint32_t QueryInterface(const GUID* iid, void** out) override;
    int32_t Start(const WideChar*, uint32_t) override { return 0; }
    int32_t SetLevel(uint32_t) override { return 0; } // collects every level
    int32_t WriteRecord(const WideChar* text, int32_t level) override;

private:
    explicit LogCollector(Service<ITextConverter> converter) : m_converter(std::move(converter)) {}
    ~LogCollector() = default;

    void Append(const WideChar* text);

    const Service<ITextConverter> m_converter;
    WrittenRecords m_records;
    std::vector<char> m_converted; // buffer for the converter
    int32_t m_references = 1;
};

} // namespace mordhost
