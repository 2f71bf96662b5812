// The host's answer: guids with their machine ids.
#include <algorithm>

#include "model/documentTraits.h"
#include "model/jsonReader.h"
#include "model/receiverModel.h"

namespace model {

bool ReceiverModel::ParseQueryResult(const std::string& text, Answer& answer) {
    if (text.empty()) {
        Took(Branch::AnswerEmpty);
        LogError("ParseQueryResult", "param error");
        return false;
    }
    const auto root = ReadJson(UpToNul(text));
    CountTraits(DocumentKind::Answer, UpToNul(text), root, m_branches);
    if (!root) {
        Took(Branch::AnswerRefused);
        LogError("ParseQueryResult", "data format error.");
        return false;
    }
    if (!root->Is(JsonValue::Kind::Object)) {
        Took(Branch::AnswerRootNoObject);
    }
    for (const JsonMember& member : root->members) {
        const std::string& guid = member.name;
        LogTrace("ParseQueryResult", {"guid is:", Logged(guid)});

        const JsonValue* const value = member.value.Find("value");
        if (value == nullptr || !value->integer) {
            Took(!member.value.Is(JsonValue::Kind::Object) ? Branch::AnswerRuleNoObject
                 : value == nullptr                        ? Branch::AnswerValueMissing
                                                           : Branch::AnswerValueNoInteger);
            LogError("ParseQueryResult", "The down_packet (value)data errror"); // sic
            break;
        }
        if (*value->integer == 0) {
            Took(Branch::AnswerValueZero);
            LogError("ParseQueryResult", "The down_packet error, value=0");
            continue;
        }
        const JsonValue* const mid = member.value.Find("mid");
        if (mid == nullptr || !mid->Is(JsonValue::Kind::Object)) {
            Took(mid == nullptr ? Branch::AnswerMidMissing : Branch::AnswerMidNoObject);
            LogError("ParseQueryResult", "The down_packet (mid)data error");
            break;
        }
        TextSet mids;
        for (const JsonMember& id : mid->members) {
            if (!mids.insert(id.name).second) {
                Took(Branch::AnswerMidTwice);
            }
            LogTrace("ParseQueryResult", {"get mid=", Logged(id.name)});
        }
        if (mids.empty()) {
            Took(Branch::AnswerMidEmpty);
        }
        const bool known =
            std::any_of(answer.begin(), answer.end(), [&](const auto& pair) { return pair.first == guid; });
        Took(known ? Branch::AnswerGuidTwice : Branch::AnswerEntryStored);
        if (!known) {
            answer.emplace_back(guid, mids);
        }
    }
    TookIf(text.size() >= sixteenBits && !answer.empty(), Branch::AnswerBeyond64K);
    if (answer.size() >= many) {
        Took(Branch::AnswerOfManyRules);
    }
    return true;
}

} // namespace model
