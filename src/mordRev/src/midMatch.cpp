// Matching of machine ids: equality of whole strings, nothing else.
#include <string_view>

#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"

namespace {

// The least string that stands in both sets, or null.
const std::string* FirstCommon(const std::set<std::string>& allowed, const std::set<std::string_view>& asked) {
    auto left = allowed.begin();
    auto right = asked.begin();
    while (left != allowed.end() && right != asked.end()) {
        if (*left < *right) {
            ++left;
        } else if (*right < *left) {
            ++right;
        } else {
            return &*left;
        }
    }
    return nullptr;
}

} // namespace

bool CMordRecv::IsMatchmid(std::string protocolKey, std::vector<std::string> queryMids, std::string* midMatchOutput) {
    const std::lock_guard lock(m_lock);
    const std::set<std::string_view> querySet(queryMids.begin(), queryMids.end());
    if (querySet.empty() || m_allowList.empty()) {
        // Keys of the list and distinct ids, that is.
        LOG_ERROR(WIDE("CMordRecv::IsMatchmid fail")
                  << WIDE("allow_list_size:") << static_cast<uint32_t>(m_allowList.size()) << WIDE("query_mids_size:")
                  << static_cast<uint32_t>(querySet.size()));
        return false;
    }
    const auto allowed = m_allowList.find(protocolKey);
    const std::string* const match = allowed == m_allowList.end() ? nullptr : FirstCommon(allowed->second, querySet);
    if (match == nullptr) {
        LOG_TRACE(WIDE("CMordRecv::IsMatchmid fail end"));
        return false;
    }
    *midMatchOutput = *match;
    LOG_TRACE(WIDE("CMordRecv::IsMatchmid success,mid_match_output matched") << *match);
    return true;
}
