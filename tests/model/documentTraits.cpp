#include "model/documentTraits.h"

#include <algorithm>

namespace model {
namespace {

// Beyond what recursion and buffers of a common size take without care.
constexpr int deepLevel = 32;
constexpr size_t longString = 1000;

struct Traits {
    bool deep = false;
    bool longString = false;
    bool nul = false;
    bool edge = false;
    bool beyondEdge = false;
    bool memberTwice = false;
};

void LookAtString(std::string_view text, Traits& traits) {
    traits.longString = traits.longString || text.size() >= longString;
    traits.nul = traits.nul || text.find('\0') != std::string_view::npos;
}

void LookAt(const JsonValue& value, int level, Traits& traits) {
    traits.deep = traits.deep || level >= deepLevel;
    switch (value.kind) {
    case JsonValue::Kind::Number:
        traits.edge = traits.edge || value.integer == INT32_MAX || value.integer == INT32_MIN;
        traits.beyondEdge = traits.beyondEdge || value.text == "2147483648" || value.text == "-2147483649";
        break;
    case JsonValue::Kind::String:
        LookAtString(value.text, traits);
        break;
    case JsonValue::Kind::Array:
        for (const JsonValue& element : value.elements) {
            LookAt(element, level + 1, traits);
        }
        break;
    case JsonValue::Kind::Object:
        for (const JsonMember& member : value.members) {
            LookAtString(member.name, traits);
            LookAt(member.value, level + 1, traits);
            traits.memberTwice = traits.memberTwice || value.Find(member.name) != &member.value;
        }
        break;
    default:
        break;
    }
}

Branch Of(DocumentKind kind, Branch list, Branch actions, Branch answer) {
    return kind == DocumentKind::List ? list : kind == DocumentKind::Actions ? actions : answer;
}

} // namespace

bool IsUtf8(std::string_view text) {
    for (size_t i = 0; i < text.size();) {
        const auto byte = [&](size_t place) -> uint32_t {
            return place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
        };
        const uint32_t first = byte(i);
        const size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        const bool nextFits = length < 2 || (first == 0xE0   ? byte(i + 1) >= 0xA0
                                             : first == 0xED ? byte(i + 1) < 0xA0
                                             : first == 0xF0 ? byte(i + 1) >= 0x90
                                             : first == 0xF4 ? byte(i + 1) < 0x90
                                                             : true);
        if (length == 0 || first > 0xF4 || !nextFits) {
            return false;
        }
        for (size_t next = 1; next < length; ++next) {
            if ((byte(i + next) & 0xC0) != 0x80) {
                return false;
            }
        }
        i += length;
    }
    return true;
}

void CountTraits(DocumentKind kind, std::string_view text, const std::optional<JsonValue>& root,
                 BranchCounts& branches) {
    const auto count = [&](bool holds, Branch list, Branch actions, Branch answer) {
        if (holds) {
            branches.Add(Of(kind, list, actions, answer));
        }
    };
    if (!root) {
        const bool blank = text.find_first_not_of(" \t\r\n") == std::string_view::npos;
        count(blank, Branch::ListBlank, Branch::ActionsBlank, Branch::AnswerBlank);
        const bool deep = std::count(text.begin(), text.end(), '[') >= deepLevel;
        count(deep, Branch::ListDeepRefused, Branch::ActionsDeepRefused, Branch::AnswerDeepRefused);
        return;
    }
    Traits traits;
    LookAt(*root, 0, traits);
    count(traits.deep, Branch::ListDeep, Branch::ActionsDeep, Branch::AnswerDeep);
    count(traits.longString, Branch::ListLongString, Branch::ActionsLongString, Branch::AnswerLongString);
    count(traits.nul, Branch::ListNulInside, Branch::ActionsNulInside, Branch::AnswerNulInside);
    count(traits.edge, Branch::ListEdgeNumber, Branch::ActionsEdgeNumber, Branch::AnswerEdgeNumber);
    count(traits.beyondEdge, Branch::ListBeyondEdge, Branch::ActionsBeyondEdge, Branch::AnswerBeyondEdge);
    count(traits.memberTwice, Branch::ListMemberTwice, Branch::ActionsMemberTwice, Branch::AnswerMemberTwice);
    count(!IsUtf8(text), Branch::ListIllFormed, Branch::ActionsIllFormed, Branch::AnswerIllFormed);
}

} // namespace model
