// The host's answer to a query: {"GUID": {"value": 1, "mid": {"MID-1": …, "MID-2": …}}, …}.
#include "logging/logMacros.h"
#include "mordRev/src/json.h"
#include "mordRev/src/mordRev.h"

bool CMordRecv::ParseQueryResult(std::string text, QueryResultTable* table) {
    if (text.empty()) {
        LOG_ERROR(WIDE("param error"));
        return false;
    }
    JsonDocument document;
    if (ParseJson(document, text.c_str()).IsError()) {
        LOG_ERROR(WIDE("data format error."));
        return false;
    }
    for (const JsonMember& rule : Members(document)) { // a root of another kind is like one without members
        std::string guid = WholeText(rule.name);
        LOG_TRACE(WIDE("guid is:") << guid);

        // A malformed rule ends the scan, and the document still counts as parsed; a value of 0 skips this rule alone.
        const JsonValue* const value = FindMember(rule.value, "value");
        if (value == nullptr || !value->IsInt()) {
            LOG_ERROR(WIDE("The down_packet (value)data errror")); // sic
            return true;
        }
        if (value->GetInt() == 0) {
            LOG_ERROR(WIDE("The down_packet error") << WIDE(", value=") << value->GetInt());
            continue;
        }
        const JsonValue* const mids = FindMember(rule.value, "mid");
        if (mids == nullptr || !mids->IsObject()) {
            LOG_ERROR(WIDE("The down_packet (mid)data error"));
            return true;
        }
        MidSet midSet;
        for (const JsonMember& mid : Members(*mids)) {
            std::string name = WholeText(mid.name);
            LOG_TRACE(WIDE("get mid=") << name);
            midSet.insert(std::move(name));
        }
        table->Insert(std::move(guid), std::move(midSet));
    }
    return true;
}
