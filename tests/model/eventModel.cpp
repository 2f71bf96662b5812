// One event, from the call to the reply.
#include "model/prettyWriter.h"
#include "model/receiverModel.h"

namespace model {

bool ReceiverModel::HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) {
    CountEntry(true, false);
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
    CountEvent(flags, ruleCount);
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

int32_t ReceiverModel::QueryDot(const std::string& request, char** result) {
    const Within within(*this, Branch::WithinQuery);
    return m_host->QueryDot(request.c_str(), m_mid.c_str(), result);
}

void ReceiverModel::FreeResult(char* result) {
    const Within within(*this, Branch::WithinFree);
    m_host->FreeResult(result);
}

bool ReceiverModel::DecideByQuery(IEventRecord** rules, uint32_t ruleCount, uint32_t* reply, IEventRecord*& matched) {
    std::vector<std::string> guids;
    for (uint32_t i = 0; i < ruleCount; ++i) {
        guids.push_back(TextOf(rules[i], "guid"));
    }
    const std::string request = RootObject({{"guid", StringArray(guids)}});

    char* result = nullptr;
    const int32_t code = QueryDot(request, &result);
    if (m_logging) { // the text is not read otherwise
        LogTrace("HandleEvent", {"query dot result_json=", result == nullptr ? "" : result});
    }

    if (code == 1007) {
        *reply = m_exceptionMode == 1 ? 1 : 0;
        Took(*reply == 1 ? Branch::QueryNetworkErrorAllowed : Branch::QueryNetworkErrorBlocked);
        TookIf(m_defenderMode == 1, Branch::QueryNetworkErrorInAllForbid);
        TookIf(result != nullptr, Branch::QueryNetworkErrorWithAnswer);
        TookIf(m_exceptionMode != 1 && m_exceptionMode != 2, Branch::QueryNetworkErrorOtherException);
        LogTrace("HandleEvent",
                 {"query dot network error, exception_mode=", Decimal(m_exceptionMode), " ,reply=", Decimal(*reply)});
        FreeResult(result);
        return true;
    }
    if (code != 0 || result == nullptr) {
        Took(code != 0 ? Branch::QueryOtherError : Branch::QueryNullAnswer);
        TookIf(code != 0 && result != nullptr, Branch::QueryOtherErrorWithAnswer);
        *reply = 0;
        LogTrace("HandleEvent", {" query dot error, reply=", Decimal(*reply)});
        FreeResult(result);
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
        FreeResult(result);
        return false;
    }
    FreeResult(result);
    for (uint32_t i = 0; i < ruleCount; ++i) {
        HandleRule(rules[i], answer, reply);
        if (*reply == 1) {
            Took(i == 0 ? Branch::FirstRuleMatched : Branch::LaterRuleMatched);
            TookIf(i >= byteRange, Branch::RuleMatchedBehind256);
            matched = rules[i];
            return true;
        }
    }
    Took(Branch::NoRuleMatched);
    TookIf(ruleCount >= byteRange && m_started, Branch::NoneOf256RulesMatched);
    return false;
}

} // namespace model
