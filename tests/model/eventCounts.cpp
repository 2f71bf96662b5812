// What the model counts besides the branches of the decision: kinds of events, of texts and of calls.
#include <algorithm>

#include "model/documentTraits.h"
#include "model/receiverModel.h"

namespace model {
namespace {

constexpr size_t longText = 1000;

} // namespace

void ReceiverModel::CountEvent(int32_t flags, uint32_t ruleCount) {
    TookIf(ruleCount >= byteRange, Branch::EventOf256Rules);
    switch (m_defenderMode) {
    case 0:
        Took(Branch::EventInNoMode);
        break;
    case 1:
        Took(Branch::EventInModeAllForbid);
        break;
    case 2:
        Took(Branch::EventInModeTwo);
        break;
    case 3:
        Took(Branch::EventInModeActionTable);
        break;
    case 4:
        Took(Branch::EventInModeAllow);
        break;
    case 5:
        Took(Branch::EventInModeEmergency);
        break;
    default:
        Took(Branch::EventInUnknownMode);
        break;
    }
    const bool disconnect = (flags & 0x04) != 0;
    const bool replyTwo = (flags & 0x10) != 0;
    Took(disconnect && replyTwo ? Branch::FlagsDisconnectAndReplyTwo
         : disconnect           ? Branch::FlagsDisconnect
         : replyTwo             ? Branch::FlagsReplyTwo
                                : Branch::FlagsNone);
    TookIf((flags & ~0x14) != 0, Branch::FlagsOthersToo);
    TookIf(m_handledBefore, Branch::EventAgain);
    TookIf(!m_inited, Branch::EventAfterUninit);
    m_handledBefore = true;
}

void ReceiverModel::CountEntry(bool isEvent, bool isDocument) {
    if (m_within) {
        Took(*m_within);
        TookIf(isEvent, Branch::EventWithinEvent);
        TookIf(isDocument, Branch::DocumentWithinEvent);
    }
}

void ReceiverModel::CountText(const std::vector<char>& buffer, const std::string& text) {
    TookIf(text.size() == buffer.size(), Branch::TextWithoutNul);
    TookIf(text.size() + 1 < buffer.size(), Branch::TextNulBeforeEnd);
    TookIf(text.empty(), Branch::TextEmpty);
    TookIf(text.size() >= longText, Branch::TextLong);
    TookIf(!IsUtf8(text), Branch::TextIllFormed);
    const auto escaped = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; };
    TookIf(std::any_of(text.begin(), text.end(), escaped), Branch::TextEscaped);
}

} // namespace model
