#include "library/reportSink.h"

#include <exception>

namespace mordhost {

int32_t ReportSink::Report(int32_t, const char* text, uint32_t size) {
    try {
        m_reports.emplace_back(text, size);
        return 0;
    } catch (const std::exception&) { // memory ran out; nothing may be thrown through the library
        return 1;
    }
}

} // namespace mordhost
