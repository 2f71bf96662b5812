// The allow list, the action table and its effect on the reply.
#include "model/documentTraits.h"
#include "model/jsonReader.h"
#include "model/parserNumbers.h"
#include "model/receiverModel.h"

namespace model {

bool ReceiverModel::SetAllowList(const char* text) {
    CountEntry(false, true);
    const bool result = FillAllowList(text);
    LogTrace("SetAllowList", {"parse allow list, ret", result ? "1" : "0"});
    return result;
}

bool ReceiverModel::FillAllowList(const std::string& text) {
    const auto root = ReadJson(text);
    CountTraits(DocumentKind::List, text, root, m_branches);
    TookIf(m_listSetBefore, Branch::ListAfterList);
    m_listSetBefore = true;
    if (!root) {
        Took(Branch::ListRefused);
        TookIf(!m_allowList.empty(), Branch::ListRefusedOverFilled);
        const ParserNumbers numbers = NumbersOf(text);
        LogError("SetAllowList", {"error_code", Decimal(numbers.code), "error_offset", Decimal(numbers.offset)});
        return false;
    }
    const JsonValue* const midList = root->Find("mid_list");
    if (midList == nullptr) {
        Took(root->Is(JsonValue::Kind::Object) ? Branch::ListNoMidList : Branch::ListRootNoObject);
        LogError("SetAllowList", "format error");
        return false;
    }
    const bool wasFilled = !m_allowList.empty();
    TookIf(wasFilled, Branch::ListReplaced);
    m_allowList.clear();
    if (!midList->Is(JsonValue::Kind::Array)) {
        Took(Branch::ListNoArray);
        LogTrace("SetAllowList", "mid list is empty");
        return true;
    }
    if (midList->elements.empty()) {
        Took(Branch::ListEmptyArray);
    }
    for (const JsonValue& entry : midList->elements) {
        AddAllowListEntry(entry);
    }
    TookIf(wasFilled && m_allowList.empty(), Branch::ListEmptiesFilled);
    size_t pairs = 0;
    for (const auto& [key, mids] : m_allowList) {
        pairs += mids.size();
    }
    m_largeLists = pairs >= largeList ? m_largeLists + 1 : 0;
    TookIf(m_largeLists != 0, Branch::ListOfThousandPairs);
    TookIf(m_largeLists >= 5, Branch::FifthListOfThousandPairs);
    return true;
}

void ReceiverModel::AddAllowListEntry(const JsonValue& entry) {
    if (!entry.Is(JsonValue::Kind::Object)) {
        Took(Branch::ListEntryNoObject);
        return;
    }
    const JsonValue* const mid = entry.Find("mid");
    if (mid == nullptr || !mid->Is(JsonValue::Kind::String)) {
        Took(Branch::ListEntryBadMid);
        return;
    }
    const JsonValue* const protocol = entry.Find("protocol");
    if (protocol == nullptr || !protocol->Is(JsonValue::Kind::Array)) {
        Took(Branch::ListEntryBadProtocol);
        return;
    }
    const std::string midText = UpToNul(mid->text);
    if (midText != mid->text) {
        Took(Branch::ListMidCut);
    }
    for (const JsonValue& element : protocol->elements) {
        if (!element.Is(JsonValue::Kind::String)) {
            Took(Branch::ListElementNoString);
            continue;
        }
        const std::string key = UpToNul(element.text);
        if (key != element.text) {
            Took(Branch::ListKeyCut);
        }
        Took(m_allowList.contains(key) ? Branch::ListKeyMerged : Branch::ListKeyNew);
        if (!m_allowList[key].insert(midText).second) {
            Took(Branch::ListMidTwice);
        }
    }
}

bool ReceiverModel::ClearAllowList() {
    CountEntry(false, false);
    LogTrace("ClearAllowList", "ClearAllowList_mids start");
    Took(m_allowList.empty() ? Branch::ClearEmpty : Branch::ClearFilled);
    m_allowList.clear();
    return true;
}

bool ReceiverModel::ParseActionJson(const char* text) {
    const bool result = FillActions(text);
    LogTrace("ParseActionJson", {"type action parse ret=", result ? "1" : "0"});
    return result;
}

bool ReceiverModel::FillActions(const std::string& text) {
    const auto root = ReadJson(text);
    CountTraits(DocumentKind::Actions, text, root, m_branches);
    const bool wasFilled = !m_actions.empty();
    if (!root) {
        Took(Branch::ActionsRefused);
        TookIf(wasFilled, Branch::ActionsRefusedOverFilled);
        LogError("ParseActionJson", "action json is invalid json format");
        return false;
    }
    if (!root->Is(JsonValue::Kind::Object)) {
        Took(Branch::ActionsRootNoObject);
    }
    m_actions.clear();
    for (const JsonMember& member : root->members) {
        const std::string key = UpToNul(member.name);
        if (key != member.name) {
            Took(Branch::ActionsKeyCut);
        }
        if (!member.value.integer || key.empty()) {
            Took(key.empty() ? Branch::ActionsEmptyKey : Branch::ActionsBadValue);
            LogError("ParseActionJson", {"key ", Logged(key), " format error"});
            continue;
        }
        const bool action = *member.value.integer != 0;
        Took(m_actions.contains(key) ? Branch::ActionsRowAgain
             : action                ? Branch::ActionsRowTrue
                                     : Branch::ActionsRowFalse);
        m_actions[key] = action;
    }
    TookIf(wasFilled, Branch::ActionsReplaced);
    if (m_actions.empty()) {
        Took(Branch::ActionsEmpty);
        TookIf(wasFilled, Branch::ActionsEmptyFilled);
        LogError("ParseActionJson", "action json is empty");
        return false;
    }
    return true;
}

bool ReceiverModel::ModiyReply(const std::string& type, int32_t flags, uint32_t* reply) {
    if (reply == nullptr) {
        return false;
    }
    const uint32_t before = *reply;
    if (m_defenderMode == 4) {
        Took(Branch::ModifyAllowAfterDecision);
        *reply = 1;
        LogTrace("ModiyReply", "defender mode=4");
    } else if (m_defenderMode == 3) {
        const auto row = m_actions.find(type);
        Took(row == m_actions.end() ? Branch::ModifyNoRow
             : row->second          ? Branch::ModifyActionTrue
                                    : Branch::ModifyActionFalse);
        if (row != m_actions.end() && row->second) {
            *reply = 1;
            LogTrace("ModiyReply", {"type=", Logged(type), ",defender mode=3,action=1"});
        }
    } else {
        Took(Branch::ModifyOtherMode);
    }
    if ((flags & 0x10) != 0) {
        Took(*reply == 1 ? Branch::ModifyFlagged : Branch::ModifyBlockStaysUnderFlag);
        if (*reply == 1) {
            *reply = 2;
        }
    }
    if (before == 0 && (*reply == 1 || *reply == 2)) {
        Took(Branch::ModifyBlockBecameAllow);
        return true;
    }
    return false;
}

} // namespace model
