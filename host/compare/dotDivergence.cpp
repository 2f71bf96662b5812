#include "compare/dotDivergence.h"

namespace mordhost {

void DotDivergence::Add(size_t line, const Brief& before, const Brief& after) {
    if (before.hasDeleted && after.hasDeleted && before.deleted == after.deleted) {
        return; // the policies had the dot both, and now lack it both
    }
    AddDeletion(line, before, Side::before, m_after);
    AddDeletion(line, after, Side::after, m_before);
}

void DotDivergence::AddDeletion(size_t line, const Brief& brief, Side side, const DotTable& other) {
    if (!brief.hasDeleted || !other.contains(brief.deleted)) {
        return;
    }
    if (m_lone.erase(brief.deleted) == 0) { // otherwise the other policy had lost it before
        m_lone[brief.deleted] = {side, line};
    }
}

const LoneDeletion* DotDivergence::Find(const std::string& guid, Side side) const {
    const auto found = m_lone.find(guid);
    return found == m_lone.end() || found->second.side != side ? nullptr : &found->second;
}

} // namespace mordhost
