#include "compare/comparison.h"

namespace mordhost {

namespace {

bool Differ(const Brief& one, const Brief& other) {
    return one.verdict != other.verdict || !one.HasSameReason(other);
}

} // namespace

void Comparison::Decide(const EventBatch& before, const EventBatch& after,
                        const std::function<void(const Difference&)>& show) {
    m_after.Begin(after); // runs in parallel if it is another process
    m_before.Begin(before);
    const std::vector<Brief>& briefsBefore = m_before.Finish();
    const std::vector<Brief>& briefsAfter = m_after.Finish();
    m_differing.clear();
    for (size_t i = 0; i < before.count; ++i) {
        if (Differ(briefsBefore[i], briefsAfter[i])) {
            m_differing.push_back(i);
        }
    }
    static const std::vector<Detail> none;
    const std::vector<Detail>& detailsBefore = m_differing.empty() ? none : m_before.Details(m_differing);
    const std::vector<Detail>& detailsAfter = m_differing.empty() ? none : m_after.Details(m_differing);
    for (size_t i = 0, shown = 0; i < before.count; ++i) {
        Count(briefsBefore[i], briefsAfter[i]);
        if (shown < m_differing.size() && m_differing[shown] == i) {
            const Difference difference{before.events[i],    briefsBefore[i],
                                        briefsAfter[i],      detailsBefore[shown],
                                        detailsAfter[shown], CausesOf(detailsBefore[shown], detailsAfter[shown])};
            m_figures.following += difference.causes.empty() ? 0 : 1;
            show(difference);
            ++shown;
        }
        m_divergence.Add(before.events[i].line, briefsBefore[i], briefsAfter[i]);
    }
}

void Comparison::Count(const Brief& before, const Brief& after) {
    ++m_figures.events;
    ++m_figures.matrix[{before.verdict, after.verdict}];
    if (before.verdict != after.verdict) {
        ++m_figures.verdictChanges;
    } else if (!before.HasSameReason(after)) {
        ++m_figures.reasonChanges;
    }
}

std::vector<Cause> Comparison::CausesOf(const Detail& before, const Detail& after) const {
    std::vector<Cause> causes;
    const auto add = [&](const Detail& detail, Side side) {
        for (const std::string& guid : detail.missing) {
            if (const LoneDeletion* const deletion = m_divergence.Find(guid, side)) {
                causes.push_back({guid, *deletion});
            }
        }
    };
    add(before, Side::before);
    add(after, Side::after);
    return causes;
}

} // namespace mordhost
