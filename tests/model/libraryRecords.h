// Brings the library's log records into a trace in the form that the model uses.
#pragma once

#include <string>

#include "model/directSiblings.h"
#include "model/trace.h"

namespace model {

// A record that is not whole (time, level, a bare file name, line, function, thread, message, line end), or whose level
// is not the one that it was written with, goes into the trace as it stands and so makes a difference.
class LibraryRecords final : public RecordTaker {
public:
    explicit LibraryRecords(Trace& trace) : m_trace(trace) {}

    void Take(int32_t level, std::basic_string_view<WideChar> record) override;

private:
    Trace& m_trace;
    std::string m_bytes; // of the record at hand
};

} // namespace model
