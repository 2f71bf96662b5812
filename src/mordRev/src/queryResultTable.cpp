#include "mordRev/src/queryResultTable.h"

#include <utility>
#include <vector>

#include "mordRev/src/hashIndex.h"
#include "mordRev/src/seededHash.h"

struct QueryResultTable::Entries {
    struct Entry {
        std::string_view guid;
        MidSet mids;
        std::shared_ptr<const void> owner;
    };

    const Entry* Find(std::string_view guid) const;
    void Add(std::string_view guid, MidSet mids, const std::shared_ptr<const void>& owner);

    std::vector<Entry> list;
    HashIndex index; // by guid; empty while the list is short
};

namespace {

// Up to this size, comparing guids costs less than hashing one.
constexpr size_t maximumLinearSearch = 8;

FilteredHash HashOfGuid(std::string_view guid) {
    return FilteredHash(HashText(guid, ProcessHashKeys().guid));
}

} // namespace

const QueryResultTable::Entries::Entry* QueryResultTable::Entries::Find(std::string_view guid) const {
    if (list.size() <= maximumLinearSearch) {
        for (const Entry& entry : list) {
            if (entry.guid == guid) {
                return &entry;
            }
        }
        return nullptr;
    }
    const uint32_t found = index.Find(HashOfGuid(guid), [&](uint32_t number) { return list[number].guid == guid; });
    return found == HashIndex::none ? nullptr : &list[found];
}

// Strong exception guarantee: everything that can throw comes before the list grows.
void QueryResultTable::Entries::Add(std::string_view guid, MidSet mids, const std::shared_ptr<const void>& owner) {
    if (list.size() < maximumLinearSearch) {
        list.reserve(maximumLinearSearch);
        list.push_back({guid, mids, owner});
        return;
    }
    if (list.size() == maximumLinearSearch) {
        HashIndex first;
        for (uint32_t number = 0; number < maximumLinearSearch; ++number) {
            first.Reserve();
            first.Add(HashOfGuid(list[number].guid), number);
        }
        index = std::move(first);
    }
    index.Reserve();
    const FilteredHash hash = HashOfGuid(guid);
    list.push_back({guid, mids, owner});
    index.Add(hash, static_cast<uint32_t>(list.size() - 1));
}

void QueryResultTable::Insert(std::string_view guid, MidSet mids, const std::shared_ptr<const void>& owner) {
    if (m_entries == nullptr) {
        m_entries = std::make_shared<Entries>();
    } else if (m_entries->Find(guid) != nullptr) {
        return;
    } else if (m_entries.use_count() > 1) {
        m_entries = std::make_shared<Entries>(*m_entries);
    }
    m_entries->Add(guid, mids, owner);
}

const MidSet* QueryResultTable::Find(std::string_view guid) const {
    if (m_entries == nullptr) {
        return nullptr;
    }
    const Entries::Entry* const entry = m_entries->Find(guid);
    return entry == nullptr ? nullptr : &entry->mids;
}

size_t QueryResultTable::Size() const {
    return m_entries == nullptr ? 0 : m_entries->list.size();
}
