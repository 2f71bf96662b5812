// The host's own log writer: it keeps the library's records in memory.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "library/service.h"

namespace mordhost {

// Log records in the order in which they were written.
struct WrittenRecords {
    std::string text;         // in UTF-8, line ends included
    std::vector<size_t> ends; // where each record ends in the text

    // Keeps the memory.
    void Clear() {
        text.clear();
        ends.clear();
    }
};

// Counts its references and deletes itself with the last one, since the library releases its logger as late as when it
// is unloaded. For one thread. No exception leaves the operations that the library calls.
class LogCollector final : public ILogWriter {
public:
    // A collector with one reference, which converts texts by `converter`.
    static Service<LogCollector> Make(Service<ITextConverter> converter);

    // Gives the records that were written since the last such call in `records`, in the place of what it holds.
    void Take(WrittenRecords& records);

    int32_t AddRef() override { return ++m_references; }
    int32_t Release() override;
    uint32_t QueryInterface(const GUID* iid, void** out) override;
    int32_t Start(const WideChar*, uint32_t) override { return 0; }
    int32_t SetLevel(uint32_t) override { return 0; } // every record is kept
    int32_t WriteRecord(const WideChar* text, int32_t level) override;

private:
    explicit LogCollector(Service<ITextConverter> converter) : m_converter(std::move(converter)) {}
    ~LogCollector() = default;

    void Append(const WideChar* text);

    const Service<ITextConverter> m_converter;
    WrittenRecords m_records;
    std::vector<char> m_converted; // room for a text
    int32_t m_references = 1;
};

} // namespace mordhost
