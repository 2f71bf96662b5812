// Matching of machine ids: whole strings, byte by byte.
#include <set>
#include <string_view>

#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"

namespace {

uint32_t CountDistinct(MidSet mids) {
    return static_cast<uint32_t>(std::set<std::string_view>(mids.begin(), mids.end()).size());
}

} // namespace

bool CMordRecv::IsMatchmid(std::string protocolKey, MidSet queryMids, std::string* midMatchOutput) {
    const AllowQuery query(protocolKey, queryMids); // hashes before the lock is taken

    const std::lock_guard lock(m_lock);
    if (queryMids.empty() || m_allowList.Table().empty()) {
        // The numbers of protocol keys and of distinct ids.
        LOG_ERROR(WIDE("CMordRecv::IsMatchmid fail")
                  << WIDE("allow_list_size:") << static_cast<uint32_t>(m_allowList.Table().size())
                  << WIDE("query_mids_size:") << CountDistinct(queryMids));
        return false;
    }
    const std::string* const match = m_allowList.Match(query);
    if (match == nullptr) {
        LOG_TRACE(WIDE("CMordRecv::IsMatchmid fail end"));
        return false;
    }
    *midMatchOutput = *match;
    LOG_TRACE(WIDE("CMordRecv::IsMatchmid success,mid_match_output matched") << *match);
    return true;
}
