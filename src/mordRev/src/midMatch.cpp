// Matching of machine ids: equality of whole strings, nothing else.
#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <vector>

#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"

namespace {

// The hashes of some ids with one protocol key. Those of few take no memory of their own.
class PairHashes {
public:
    PairHashes(uint32_t protocolHash, MidSet mids) {
        if (mids.size() > m_few.size()) {
            m_many.resize(mids.size());
            m_begin = m_many.data();
        }
        m_end = std::transform(mids.begin(), mids.end(), m_begin, [protocolHash](std::string_view mid) {
            return AllowIndex::HashOfPair(protocolHash, mid);
        });
    }
    PairHashes(const PairHashes&) = delete;
    PairHashes& operator=(const PairHashes&) = delete;

    // In the order of the ids.
    const MarkedHash* begin() const { return m_begin; }
    const MarkedHash* end() const { return m_end; }

private:
    std::array<MarkedHash, 128> m_few; // NOLINT(cppcoreguidelines-pro-type-member-init): set as far as there are ids
    std::vector<MarkedHash> m_many;
    MarkedHash* m_begin = m_few.data();
    MarkedHash* m_end;
};

uint32_t CountDistinct(MidSet mids) {
    return static_cast<uint32_t>(std::set<std::string_view>(mids.begin(), mids.end()).size());
}

} // namespace

bool CMordRecv::IsMatchmid(std::string protocolKey, MidSet queryMids, std::string* midMatchOutput) {
    // All that needs no list comes before the lock, which is then held for as many look-ups as there are ids.
    const PairHashes pairs(AllowIndex::HashOfProtocol(protocolKey), queryMids);

    const std::lock_guard lock(m_lock);
    if (queryMids.empty() || m_allowList.empty()) {
        // Keys of the list and distinct ids, that is.
        LOG_ERROR(WIDE("CMordRecv::IsMatchmid fail")
                  << WIDE("allow_list_size:") << static_cast<uint32_t>(m_allowList.size()) << WIDE("query_mids_size:")
                  << CountDistinct(queryMids));
        return false;
    }
    bool mayMatch = false;
    for (const MarkedHash& pair : pairs) {
        mayMatch |= m_allowIndex.MayHold(pair);
    }
    const std::string* match = nullptr; // the least of those that stand on both sides
    const auto allowed = mayMatch ? m_allowList.find(protocolKey) : m_allowList.end();
    if (allowed != m_allowList.end()) {
        const MarkedHash* pair = pairs.begin();
        for (const std::string_view mid : queryMids) {
            const std::string* const found = m_allowIndex.Find(*pair++, allowed->second, mid);
            if (found != nullptr && (match == nullptr || *found < *match)) {
                match = found;
            }
        }
    }
    if (match == nullptr) {
        LOG_TRACE(WIDE("CMordRecv::IsMatchmid fail end"));
        return false;
    }
    *midMatchOutput = *match;
    LOG_TRACE(WIDE("CMordRecv::IsMatchmid success,mid_match_output matched") << *match);
    return true;
}
