// Collects the reports of the library.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frame/interfaces.h"

namespace mordhost {

// For use by one thread.
class ReportSink final : public IReportSink {
public:
    int32_t Report(int32_t kind, const char* text, uint32_t size) override;

    // Replaces `reports` by the reports since the last call, unchanged.
    void Take(std::vector<std::string>& reports);

private:
    std::vector<std::string> m_reports; // longer than m_count, to reuse memory
    size_t m_count = 0;
};

} // namespace mordhost
