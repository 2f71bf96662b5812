// The figures of a run.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "decide/decision.h"

namespace mordhost {

class Statistics {
public:
    void Add(const Decision& decision);

    size_t Events() const { return m_events; }
    size_t Reports() const { return m_reports; }
    size_t Deleted() const { return m_deleted; }
    const std::map<std::string, size_t>& Verdicts() const { return m_verdicts; }

    // The number of events that the library decided.
    size_t Decisions() const { return m_durations.size(); }

    // The percentile of the durations by nearest rank; 0 without decisions.
    std::chrono::nanoseconds Percentile(unsigned percent) const;

private:
    size_t m_events = 0;
    size_t m_reports = 0;
    size_t m_deleted = 0;
    std::map<std::string, size_t> m_verdicts;
    std::vector<uint32_t> m_durations; // in nanoseconds, at most four seconds
};

} // namespace mordhost
