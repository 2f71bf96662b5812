// The verdict for one rule of an event.
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/recordReader.h"

namespace {

// The kind of dot that DeleteDot receives.
constexpr int32_t deletedDotKind = 2;

} // namespace

bool CMordRecv::HandleEventInner(IEventRecord* event, IEventRecord* rule, QueryResultTable queryResult,
                                 uint32_t* reply) {
    if (reply == nullptr || event == nullptr || m_host == nullptr) {
        LOG_ERROR(WIDE("parameter error"));
        return false;
    }
    if (!m_started.load(std::memory_order_relaxed)) {
        LOG_ERROR(WIDE("receving end not start")); // sic
        return false;
    }
    const RecordText guid(rule, "guid");
    const RecordText type(rule, "type");

    const MidSet* const mids = queryResult.Find(guid.View());
    if (mids == nullptr) {
        *reply = REPLY_BLOCK;
        LOG_TRACE(WIDE("query dot result is empty, reply=") << *reply << WIDE(",rule guid") << guid.Text());
        return true;
    }
    if (mids->empty()) {
        *reply = REPLY_BLOCK;
        LOG_TRACE(WIDE("query dot result mid is empty, reply=") << *reply << WIDE(",rule guid") << guid.Text());
        return true;
    }
    // A web rule has a separate list under its guid; all rules of another type share the list of their type.
    const RecordText& protocolKey = type.View() == "web" ? guid : type;
    std::string midMatched;
    if (!IsMatchmid(std::string(protocolKey.View()), *mids, &midMatched)) {
        *reply = REPLY_BLOCK;
        LOG_TRACE(WIDE("not match any mid,guid:") << guid.Text() << WIDE(",reply:") << *reply);
        return true;
    }
    *reply = REPLY_ALLOW;
    LOG_TRACE(WIDE("match mid=") << midMatched << WIDE(",rule guid=") << guid.Text() << WIDE(",reply:") << *reply);
    const bool deleted = m_host->DeleteDot(guid.Text(), m_mid.c_str(), deletedDotKind, type.Text()) == 0;
    LOG_TRACE(WIDE("del dot,ret=") << deleted << WIDE(",rule guid") << guid.Text());
    return true;
}
