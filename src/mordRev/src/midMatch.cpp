// Matching of machine ids: equality of whole strings, nothing else.
#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <vector>

#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"

namespace {

// The hashes of some ids. Those of few take no memory of their own.
class MidHashes {
public:
    explicit MidHashes(MidSet mids) {
        if (mids.size() > m_few.size()) {
            m_many.resize(mids.size());
            m_hashes = m_many.data();
        }
        const HashKey& key = AllowIndex::MidKey();
        std::transform(mids.begin(), mids.end(), m_hashes, [&key](std::string_view mid) { return HashText(mid, key); });
    }
    MidHashes(const MidHashes&) = delete;
    MidHashes& operator=(const MidHashes&) = delete;

    uint32_t operator[](size_t i) const { return m_hashes[i]; }

private:
    std::array<uint32_t, 128> m_few; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as there are ids are set
    std::vector<uint32_t> m_many;
    uint32_t* m_hashes = m_few.data();
};

uint32_t CountDistinct(MidSet mids) {
    return static_cast<uint32_t>(std::set<std::string_view>(mids.begin(), mids.end()).size());
}

} // namespace

bool CMordRecv::IsMatchmid(std::string protocolKey, MidSet queryMids, std::string* midMatchOutput) {
    // All that needs no list comes before the lock, which is then held for as many look-ups as there are ids.
    const uint32_t protocolHash = AllowIndex::HashOfProtocol(protocolKey);
    const MidHashes midHashes(queryMids);

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
        for (size_t i = 0; i < queryMids.size(); ++i) {
            m_allowIndex.Prefetch(protocolHash, midHashes[i]);
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
