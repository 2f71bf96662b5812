// The action table, and the final reply.
//
// The document is an object; each member is a row: {"TYPE-1": 1, "TYPE-2": 0}.
#include "logging/logMacros.h"
#include "mordRev/src/json.h"
#include "mordRev/src/mordRev.h"

bool CMordRecv::ParseActionJson(const char* text) {
    const std::lock_guard lock(m_lock);
    bool result = false;
    JsonDocument document;
    if (ParseJson(document, text).IsError()) {
        LOG_ERROR(WIDE("action json is invalid json format"));
    } else {
        m_actionTable.clear(); // cleared even if no new row is valid
        for (const JsonMember& member : Members(document)) {
            std::string type = TextToNul(member.name);
            if (member.value.IsInt() && !type.empty()) {
                m_actionTable[std::move(type)] = member.value.GetInt() != 0;
            } else {
                LOG_ERROR(WIDE("key ") << type << WIDE(" format error"));
            }
        }
        result = !m_actionTable.empty();
        if (!result) {
            LOG_ERROR(WIDE("action json is empty"));
        }
    }
    LOG_TRACE(WIDE("type action parse ret=") << result);
    return result;
}

bool CMordRecv::ModiyReply(std::string type, uint32_t flags, uint32_t* reply) {
    if (reply == nullptr) {
        return false;
    }
    const uint32_t before = *reply;
    const uint32_t mode = m_defenderMode.load(std::memory_order_relaxed);
    if (mode == MODE_ALLOW_AFTER_DECISION) {
        *reply = REPLY_ALLOW;
        LOG_TRACE(WIDE("defender mode=") << mode);
    } else if (mode == MODE_ACTION_TABLE) {
        const std::lock_guard lock(m_lock);
        const auto row = m_actionTable.find(type);
        if (row != m_actionTable.end() && row->second) {
            *reply = REPLY_ALLOW;
            LOG_TRACE(WIDE("type=") << type << WIDE(",defender mode=") << mode << WIDE(",action=1"));
        }
    }
    if (*reply == REPLY_ALLOW && (flags & EVENT_FLAG_REPLY_TWO) != 0) {
        *reply = REPLY_ALLOW_FLAGGED;
    }
    return before == REPLY_BLOCK && (*reply == REPLY_ALLOW || *reply == REPLY_ALLOW_FLAGGED);
}
