// One event, from the call to the reply.
#include "model/prettyWriter.h"
#include "model/receiverModel.h"

namespace model {

bool ReceiverModel::HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) {
    LogTrace("HandleEvent", "==>enter");
    if (reply == nullptr || m_host == nullptr) {
        Took(reply == nullptr ? Branch::EventNullReply : Branch::EventNoHost);
        LogError("HandleEvent", "param error");
        return false;
    }
    *reply = 0;
    if (event == nullptr || rules == nullptr || ruleCount == 0) {
        Took(event == nullptr ? Branch::EventNull : rules == nullptr ? Branch::EventNullRules : Branch::EventNoRules);
        LogError("HandleEvent", "param error");
        return false;
    }
    const int32_t flags = Int32Of(event, "flags");
    const std::string type = TextOf(rules[0], "type");

    bool result = true;
    IEventRecord* matched = nullptr;
    if (m_defenderMode == 5) {
        Took((flags & 0x04) != 0 ? Branch::EventEmergencyAndDisconnect : Branch::EventEmergency);
        *reply = 1;
        LogTrace("HandleEvent", "defender mode is emergency");
    } else if ((flags & 0x04) != 0) {
        Took(m_defenderMode == 1 ? Branch::EventDisconnectInAllForbid : Branch::EventDisconnect);
        *reply = 1;
    } else {
        result = DecideByQuery(rules, ruleCount, reply, matched);
    }

    const bool blockModified = ModiyReply(type, flags, reply);
    if (matched != nullptr) {
        Report(event, &matched, 1, *reply, blockModified);
    } else {
        Report(event, rules, ruleCount, *reply, blockModified);
    }
    return result;
}

bool ReceiverModel::DecideByQuery(IEventRecord** rules, uint32_t ruleCount, uint32_t* reply, IEventRecord*& matched) {
    std::vector<std::string> guids;
    for (uint32_t i = 0; i < ruleCount; ++i) {
        guids.push_back(TextOf(rules[i], "guid"));
    }
    const std::string request = RootObject({{"guid", StringArray(guids)}});

    char* result = nullptr;
    const int32_t code = m_host->QueryDot(request.c_str(), m_mid.c_str(), &result);
    LogTrace("HandleEvent", {"query dot result_json=", result == nullptr ? "" : result});

    if (code == 1007) {
        *reply = m_exceptionMode == 1 ? 1 : 0;
        Took(*reply == 1 ? Branch::QueryNetworkErrorAllowed : Branch::QueryNetworkErrorBlocked);
        if (m_defenderMode == 1) {
            Took(Branch::QueryNetworkErrorInAllForbid);
        }
        if (result != nullptr) {
            Took(Branch::QueryNetworkErrorWithAnswer);
        }
        LogTrace("HandleEvent",
                 {"query dot network error, exception_mode=", Decimal(m_exceptionMode), " ,reply=", Decimal(*reply)});
        m_host->FreeResult(result);
        return true;
    }
    if (code != 0 || result == nullptr) {
        Took(code != 0 ? Branch::QueryOtherError : Branch::QueryNullAnswer);
        *reply = 0;
        LogTrace("HandleEvent", {" query dot error, reply=", Decimal(*reply)});
        m_host->FreeResult(result);
        return false;
    }
    if (m_defenderMode == 1) {
        Took(Branch::QueryAllForbid);
        *reply = 0;
        LogTrace("HandleEvent", {" defender mode is all forbid, reply=", Decimal(*reply)});
        return true; // the answer stays with this side
    }

    Answer answer;
    if (!ParseQueryResult(result, answer)) {
        *reply = 0;
        LogTrace("HandleEvent", {" query dot error, reply=", Decimal(*reply)});
        m_host->FreeResult(result);
        return false;
    }
    m_host->FreeResult(result);
    for (uint32_t i = 0; i < ruleCount; ++i) {
        HandleRule(rules[i], answer, reply);
        if (*reply == 1) {
            Took(i == 0 ? Branch::FirstRuleMatched : Branch::LaterRuleMatched);
            matched = rules[i];
            return true;
        }
    }
    Took(Branch::NoRuleMatched);
    return false;
}

} // namespace model
