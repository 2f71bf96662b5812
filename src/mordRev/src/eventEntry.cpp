// The entry of every decision: HandleEvent, from the event to the final reply.
#include "logging/logMacros.h"
#include "mordRev/src/json.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/queryAnswer.h"
#include "mordRev/src/recordReader.h"
#include "mordRev/src/ruleGuids.h"

namespace {

// The query request: the guids of all rules.
class QueryRequest {
public:
    QueryRequest(IEventRecord** rules, uint32_t ruleCount) {
        JsonText::Writer& writer = m_text.Out();
        writer.StartObject();
        writer.Text("guid");
        WriteRuleGuids(writer, rules, ruleCount);
        writer.EndObject();
    }

    const char* Text() const { return m_text.Get(); }

private:
    JsonText m_text;
};

} // namespace

bool CMordRecv::HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) {
    LOG_TRACE(WIDE("==>enter"));
    if (reply == nullptr || m_host == nullptr) {
        LOG_ERROR(WIDE("param error"));
        return false;
    }
    *reply = REPLY_BLOCK;
    if (event == nullptr || rules == nullptr || ruleCount == 0) {
        LOG_ERROR(WIDE("param error"));
        return false;
    }
    const uint32_t flags = ReadInt32(event, "flags");
    std::string type = ReadString(rules[0], "type"); // used for the whole call, whichever rule decides
    IEventRecord* matched = nullptr;                 // not an index: the host can change the array during a call
    bool result = true;

    if (m_defenderMode.load(std::memory_order_relaxed) == MODE_EMERGENCY) {
        *reply = REPLY_ALLOW;
        LOG_TRACE(WIDE("defender mode is emergency"));
    } else if ((flags & EVENT_FLAG_DISCONNECT) != 0) {
        *reply = REPLY_ALLOW;
    } else {
        const QueryRequest request(rules, ruleCount);
        DotAnswer answer(m_host);
        QueryResultTable queryResult;
        const int32_t code = m_host->QueryDot(request.Text(), m_mid.c_str(), answer.Out());
        LOG_TRACE(WIDE("query dot result_json=") << answer.Text());

        if (code == DOT_QUERY_NETWORK_ERROR) {
            const uint32_t exceptionMode = m_exceptionMode.load(std::memory_order_relaxed);
            *reply = exceptionMode == EXCEPTION_ALLOW ? REPLY_ALLOW : REPLY_BLOCK;
            LOG_TRACE(WIDE("query dot network error, exception_mode=") << exceptionMode << WIDE(" ,reply=") << *reply);
            answer.GiveBack();
        } else if (code != DOT_QUERY_ANSWERED || answer.Text() == nullptr) {
            *reply = REPLY_BLOCK;
            LOG_TRACE(WIDE(" query dot error, reply=") << *reply);
            answer.GiveBack();
            result = false;
        } else if (m_defenderMode.load(std::memory_order_relaxed) == MODE_ALL_FORBID) {
            answer.Keep(); // by design: only on this path the host never gets its buffer back
            *reply = REPLY_BLOCK;
            LOG_TRACE(WIDE(" defender mode is all forbid, reply=") << *reply);
        } else if (!ParseQueryResult(answer.View(), &queryResult)) {
            *reply = REPLY_BLOCK;
            LOG_TRACE(WIDE(" query dot error, reply=") << *reply);
            answer.GiveBack();
            result = false;
        } else {
            answer.GiveBack();
            matched = MatchRules(event, rules, ruleCount, queryResult, reply);
            result = matched != nullptr;
        }
    }

    const bool blockModified = ModiyReply(std::move(type), flags, reply);
    if (matched != nullptr) {
        ReportEventHandleRes(event, &matched, 1, *reply, blockModified);
    } else {
        ReportEventHandleRes(event, rules, ruleCount, *reply, blockModified);
    }
    return result;
}

IEventRecord* CMordRecv::MatchRules(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount,
                                    const QueryResultTable& queryResult, uint32_t* reply) {
    for (uint32_t i = 0; i < ruleCount; ++i) {
        IEventRecord* const rule = rules[i];
        HandleEventInner(event, rule, queryResult, reply);
        if (*reply == REPLY_ALLOW) {
            return rule;
        }
    }
    return nullptr;
}
