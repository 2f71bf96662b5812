// Where the library's reports go.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frame/interfaces.h"

namespace mordhost {

// Keeps every report until it is taken. For one thread.
class ReportSink final : public IReportSink {
public:
    int32_t Report(int32_t kind, const char* text, uint32_t size) override;

    // Gives the reports since the last such call, each as it was delivered, in the place of what `reports` holds.
    void Take(std::vector<std::string>& reports);

private:
    std::vector<std::string> m_reports; // the first ones; the others are there for their memory
    size_t m_count = 0;
};

} // namespace mordhost
