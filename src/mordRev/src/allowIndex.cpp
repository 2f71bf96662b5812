// The allow list and the index beside it, as tables.
#include "mordRev/src/allowList.h"

uint32_t AllowIndex::HashOfProtocol(const std::string& protocol) {
    return HashText(protocol, ProcessHashKeys().protocol);
}

void AllowIndex::Reserve() {
    m_pairs.emplace_back(); // by the vector's own growth: reserve() takes no more than it is told
    m_pairs.pop_back();
    m_index.Reserve();
}

void AllowIndex::Add(const MarkedHash& pair, const AllowedMids& mids, const std::string& mid) noexcept {
    m_index.Add(pair, static_cast<uint32_t>(m_pairs.size()));
    m_pairs.push_back({&mids, &mid});
}

void AllowIndex::Clear() noexcept {
    m_index.Clear();
    m_pairs = std::vector<Pair>(); // not {}, which would keep the memory
}

// A key comes into the table together with its first machine id.
void Allow(AllowList& list, AllowIndex& index, std::string protocol, std::string mid) {
    const MarkedHash pair = AllowIndex::HashOfPair(AllowIndex::HashOfProtocol(protocol), mid);
    index.Reserve();
    auto entry = list.find(protocol);
    auto place = AllowedMids::iterator();
    if (entry == list.end()) {
        AllowedMids first;
        place = first.insert(std::move(mid)).first;
        entry = list.emplace(std::move(protocol), std::move(first)).first;
    } else {
        const auto [inserted, isNew] = entry->second.insert(std::move(mid));
        if (!isNew) {
            return;
        }
        place = inserted;
    }
    index.Add(pair, entry->second, *place);
}
