#include "review/answerCheck.h"

#include <set>

#include "document/jsonAccess.h"
#include "policy/actionRows.h"

namespace mordhost {

namespace {

using Kind = JsonNode::Kind;

// What the library does with a rule of an answer.
enum class RuleUse { taken, skipped, endsAtValue, endsAtMids };

RuleUse UseOf(const JsonNode& rule) {
    const JsonNode* const value = rule.kind == Kind::object ? FindMember(rule, "value") : nullptr;
    // As an action, "value" is a 32-bit integer.
    const std::optional<int32_t> number = value == nullptr ? std::nullopt : ActionOf(*value);
    if (!number) {
        return RuleUse::endsAtValue;
    }
    if (*number == 0) {
        return RuleUse::skipped;
    }
    const JsonNode* const mids = FindMember(rule, "mid");
    return mids != nullptr && mids->kind == Kind::object ? RuleUse::taken : RuleUse::endsAtMids;
}

} // namespace

void CheckAnswer(const JsonDocument& document, Findings& findings) {
    const auto warn = [&](const char* code, size_t begin, const std::string& message, const char* expected,
                          const char* fix) {
        findings.Warn(document, {code, begin, message, expected, fix});
    };
    const std::string ends = "the library ignores this rule and all rules after it, because ";
    const JsonNode& root = document.Root();
    if (root.kind != Kind::object) {
        warn("answer-not-object", root.begin,
             std::string("the answer has no rule for the library, because it is ") + KindName(root.kind), "an object",
             "write the rules as members of an object");
    }
    std::set<std::string_view> guids;
    for (const JsonMember& rule : root.members) {
        switch (UseOf(rule.value)) {
        case RuleUse::endsAtValue:
            return warn("answer-value-malformed", rule.begin, ends + "it has no \"value\" that is a 32-bit integer",
                        "\"value\": 1", "write the number without fraction and exponent");
        case RuleUse::endsAtMids:
            return warn("answer-mid-malformed", rule.begin, ends + "it has no \"mid\" that is an object",
                        "\"mid\": {\"MID-1\": 1}", "write the machine ids as the names of members");
        case RuleUse::skipped:
            warn("answer-value-zero", rule.begin, "the library skips this rule, because its \"value\" is 0",
                 "\"value\": 1", "omit a rule without an answer");
            break;
        case RuleUse::taken:
            if (!guids.insert(rule.name).second) {
                warn("answer-repeated-guid", rule.begin,
                     "this rule has no effect, because the answer has its guid already", "each guid once",
                     "merge the two members");
            }
        }
    }
}

} // namespace mordhost
