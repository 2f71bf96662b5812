#include "decide/reportSink.h"

#include <exception>

namespace mordhost {

int32_t ReportSink::Report(int32_t, const char* text, uint32_t size) {
    try {
        if (m_count == m_reports.size()) {
            m_reports.emplace_back();
        }
        m_reports[m_count].assign(text, size);
        ++m_count;
        return 0;
    } catch (const std::exception&) { // out of memory
        return 1;
    }
}

void ReportSink::Take(std::vector<std::string>& reports) {
    m_reports.resize(m_count);
    m_reports.swap(reports);
    m_count = 0;
}

} // namespace mordhost
