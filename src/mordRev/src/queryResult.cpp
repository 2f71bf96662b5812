// The table that an answer fills.
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/queryAnswer.h"

bool CMordRecv::ParseQueryResult(std::string text, QueryResultTable* table) {
    if (text.empty()) {
        LOG_ERROR(WIDE("param error"));
        return false;
    }
    const auto answer = std::make_shared<QueryAnswer>(std::move(text));
    if (!answer->Read()) {
        LOG_ERROR(WIDE("data format error."));
        return false;
    }
    for (const AnsweredRule& rule : answer->rules) {
        LOG_TRACE(WIDE("guid is:") << rule.guid.data());

        // A malformed rule ends the scan of a document that still counts as parsed; a value of 0 skips only its rule.
        if (rule.value == AnsweredRule::Value::malformed) {
            LOG_ERROR(WIDE("The down_packet (value)data errror")); // sic
            return true;
        }
        if (rule.value == AnsweredRule::Value::zero) {
            LOG_ERROR(WIDE("The down_packet error") << WIDE(", value=") << 0);
            continue;
        }
        if (!rule.mids) {
            LOG_ERROR(WIDE("The down_packet (mid)data error"));
            return true;
        }
        const MidSet mids(answer->mids.data() + rule.mids->first, rule.mids->count);
        for (const std::string_view mid : mids) {
            LOG_TRACE(WIDE("get mid=") << mid.data());
        }
        table->Insert(rule.guid, mids, answer);
    }
    return true;
}
