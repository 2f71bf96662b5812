// Matching of machine ids: equality of whole strings, nothing else.
#include <set>
#include <string_view>
#include <vector>

#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"

namespace {

uint32_t CountDistinct(MidSet mids) {
    return static_cast<uint32_t>(std::set<std::string_view>(mids.begin(), mids.end()).size());
}

} // namespace

bool CMordRecv::IsMatchmid(std::string protocolKey, MidSet queryMids, std::string* midMatchOutput) {
    // All that needs no list comes before the lock, which is then held for as many look-ups as there are ids.
    const uint32_t protocolHash = AllowIndex::HashOfProtocol(protocolKey);
    std::vector<uint32_t> midHashes;
    midHashes.reserve(queryMids.size());
    for (const std::string_view mid : queryMids) {
        midHashes.push_back(AllowIndex::HashOfMid(mid));
    }

    const std::lock_guard lock(m_lock);
    if (queryMids.empty() || m_allowList.empty()) {
        // Keys of the list and distinct ids, that is.
        LOG_ERROR(WIDE("CMordRecv::IsMatchmid fail")
                  << WIDE("allow_list_size:") << static_cast<uint32_t>(m_allowList.size()) << WIDE("query_mids_size:")
                  << CountDistinct(queryMids));
        return false;
    }
    const std::string* match = nullptr; // the least of those that stand on both sides
    const auto allowed = m_allowList.find(protocolKey);
    if (allowed != m_allowList.end()) {
        // The ids are all on their way before the first is looked for.
        for (const uint32_t midHash : midHashes) {
            m_allowIndex.Prefetch(protocolHash, midHash);
        }
        for (size_t i = 0; i < queryMids.size(); ++i) {
            const std::string* const found =
                m_allowIndex.Find(protocolHash, allowed->second, midHashes[i], queryMids[i]);
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
