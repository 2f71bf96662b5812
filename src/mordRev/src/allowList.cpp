// The allow list: which machines may connect, by protocol key.
//
// The document is organised by machine: {"mid_list": [{"mid": "MID-1", "protocol": ["KEY-1", "KEY-2"]}, …]}. The table
// is organised by protocol.
#include "logging/logMacros.h"
#include "mordRev/src/json.h"
#include "mordRev/src/mordRev.h"

namespace {

// Adds what one entry of "mid_list" says. An entry without a "mid" that is a string and a "protocol" that is an array
// is passed over, and so is an element of "protocol" that is no string.
void AddEntry(AllowList& list, AllowIndex& index, const JsonValue& entry) {
    const JsonValue* const mid = FindMember(entry, "mid");
    if (mid == nullptr || !mid->IsString()) {
        return;
    }
    const JsonValue* const protocols = FindMember(entry, "protocol");
    if (protocols == nullptr || !protocols->IsArray()) {
        return;
    }
    for (const JsonValue& protocol : protocols->GetArray()) {
        if (protocol.IsString()) {
            Allow(list, index, TextToNul(protocol), TextToNul(*mid));
        }
    }
}

} // namespace

bool CMordRecv::SetAllowList(const char* text) {
    const std::lock_guard lock(m_lock);
    std::string copy = text == nullptr ? "" : text; // parsed in place; a null text is refused like an empty one
    JsonDocument document;
    const auto parsed = ParseJsonInPlace(document, copy.data(), copy.size());
    const JsonValue* const midList = parsed.IsError() ? nullptr : FindMember(document, "mid_list");
    if (parsed.IsError()) {
        LOG_ERROR(WIDE("error_code") << static_cast<uint32_t>(parsed.Code()) << WIDE("error_offset")
                                     << static_cast<uint32_t>(parsed.Offset()));
    } else if (midList == nullptr) {
        LOG_ERROR(WIDE("format error"));
    } else {
        m_allowList.clear(); // the old list is gone from here on, whatever follows
        m_allowIndex.Clear();
        if (!midList->IsArray()) {
            LOG_TRACE(WIDE("mid list is empty")); // sic: a value of another kind logs this, an empty array does not
        } else {
            for (const JsonValue& entry : midList->GetArray()) {
                AddEntry(m_allowList, m_allowIndex, entry);
            }
        }
    }
    const bool result = midList != nullptr;
    LOG_TRACE(WIDE("parse allow list, ret") << result);
    return result;
}

bool CMordRecv::ClearAllowList() {
    const std::lock_guard lock(m_lock);
    LOG_TRACE(WIDE("ClearAllowList_mids start"));
    m_allowList.clear();
    m_allowIndex.Clear();
    return true;
}
