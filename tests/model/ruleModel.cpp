// One rule of an event: the machine ids under its guid against the allow list.
#include <algorithm>

#include "model/receiverModel.h"

namespace model {

void ReceiverModel::HandleRule(IEventRecord* rule, const Answer& answer, uint32_t* reply) {
    if (!m_started) {
        Took(Branch::RuleNotStarted);
        LogError("HandleEventInner", "receving end not start"); // sic
        return;
    }
    const std::string guid = TextOf(rule, "guid");
    const std::string type = TextOf(rule, "type");

    const auto entry = std::find_if(answer.begin(), answer.end(), [&](const auto& pair) { return pair.first == guid; });
    if (entry == answer.end()) {
        Took(Branch::RuleGuidAbsent);
        if (answer.size() >= many) {
            Took(Branch::RuleGuidAbsentAmongMany);
        }
        *reply = 0;
        LogTrace("HandleEventInner", {"query dot result is empty, reply=0,rule guid", Logged(guid)});
        return;
    }
    if (answer.size() >= many) {
        Took(Branch::RuleGuidAmongMany);
    }
    const TextSet& mids = entry->second;
    if (mids.empty()) {
        Took(Branch::RuleGuidWithoutMids);
        *reply = 0;
        LogTrace("HandleEventInner", {"query dot result mid is empty, reply=0,rule guid", Logged(guid)});
        return;
    }
    Took(type == "web" ? Branch::RuleKeyIsGuid : Branch::RuleKeyIsType);
    const std::string key = type == "web" ? guid : type;
    std::string matched;
    if (!IsMatchmid(key, mids, matched)) {
        Took(Branch::RuleNotMatched);
        *reply = 0;
        LogTrace("HandleEventInner", {"not match any mid,guid:", Logged(guid), ",reply:0"});
        return;
    }
    *reply = 1;
    LogTrace("HandleEventInner", {"match mid=", Logged(matched), ",rule guid=", Logged(guid), ",reply:1"});
    const bool deleted = DeleteDot(guid, type);
    Took(deleted ? Branch::RuleMatchedDotDeleted : Branch::RuleMatchedDotStays);
    LogTrace("HandleEventInner", {"del dot,ret=", deleted ? "1" : "0", ",rule guid", Logged(guid)});
}

bool ReceiverModel::DeleteDot(const std::string& guid, const std::string& type) {
    const Within within(*this, Branch::WithinDelete);
    return m_host->DeleteDot(guid.c_str(), m_mid.c_str(), 2, type.c_str()) == 0;
}

bool ReceiverModel::IsMatchmid(const std::string& key, const TextSet& queryMids, std::string& matched) {
    if (queryMids.empty() || m_allowList.empty()) {
        Took(Branch::MatchEmptyAllowList);
        LogError("IsMatchmid", {"CMordRecv::IsMatchmid failallow_list_size:", Decimal(m_allowList.size()),
                                "query_mids_size:", Decimal(queryMids.size())});
        return false;
    }
    TextSet common;
    if (const auto entry = m_allowList.find(key); entry != m_allowList.end()) {
        for (const std::string& mid : queryMids) {
            if (entry->second.contains(mid)) {
                common.insert(mid);
            }
        }
        if (queryMids.size() >= veryMany) {
            Took(Branch::MatchOfManyMids);
        }
        TookIf(queryMids.size() >= largeList, Branch::MatchOfThousandMids);
        if (!common.empty() && entry->second.size() >= many) {
            Took(Branch::MatchInLargeList);
        }
        Took(common.empty()       ? Branch::MatchNoneInCommon
             : common.size() == 1 ? Branch::MatchOneInCommon
                                  : Branch::MatchSeveralInCommon);
    } else {
        Took(Branch::MatchKeyAbsent);
    }
    if (common.empty()) {
        LogTrace("IsMatchmid", "CMordRecv::IsMatchmid fail end");
        return false;
    }
    matched = *common.begin();
    LogTrace("IsMatchmid", {"CMordRecv::IsMatchmid success,mid_match_output matched", Logged(matched)});
    return true;
}

} // namespace model
