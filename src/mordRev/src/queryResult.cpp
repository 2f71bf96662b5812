// The table that an answer fills.
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/queryAnswer.h"
#include "mordRev/src/spareBlocks.h"

bool CMordRecv::ParseQueryResult(std::string_view text, QueryResultTable* table) {
    if (text.empty()) {
        LOG_ERROR(WIDE("param error"));
        return false;
    }
    const auto answer = std::allocate_shared<QueryAnswer>(BlockAllocator<QueryAnswer>());
    if (!answer->Read(text)) {
        LOG_ERROR(WIDE("data format error."));
        return false;
    }
    for (const AnsweredRule& rule : answer->Rules()) {
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
        for (const std::string_view mid : *rule.mids) {
            LOG_TRACE(WIDE("get mid=") << mid.data());
        }
        table->Insert(rule.guid, *rule.mids, answer);
    }
    return true;
}
