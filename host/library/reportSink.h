// Where the library's reports go.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "frame/interfaces.h"

namespace mordhost {

// Keeps every report until it is taken. For one thread.
class ReportSink final : public IReportSink {
public:
    int32_t Report(int32_t kind, const char* text, uint32_t size) override;

    // The reports since the last such call, each as it was delivered.
    std::vector<std::string> Take() { return std::exchange(m_reports, {}); }

private:
    std::vector<std::string> m_reports;
};

} // namespace mordhost
