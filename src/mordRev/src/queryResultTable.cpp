#include "mordRev/src/queryResultTable.h"

void QueryResultTable::Insert(std::string guid, MidSet mids) {
    if (m_entries == nullptr) {
        m_entries = std::make_shared<Entries>();
    } else if (m_entries.use_count() > 1) {
        m_entries = std::make_shared<Entries>(*m_entries);
    }
    m_entries->emplace(std::move(guid), std::move(mids));
}

const MidSet* QueryResultTable::Find(const std::string& guid) const {
    if (m_entries == nullptr) {
        return nullptr;
    }
    const auto entry = m_entries->find(guid);
    return entry == m_entries->end() ? nullptr : &entry->second;
}

size_t QueryResultTable::Size() const {
    return m_entries == nullptr ? 0 : m_entries->size();
}
