#include "decide/reason.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace mordhost {

namespace {

// Why a rule did not match, in ascending priority.
enum class RuleHindrance { none, receiverNotStarted, noDot, emptyDot, emptyAllowList, noAllowedMachine };

// What the records of one event say.
struct Findings {
    std::string settled; // the phrase of a decision that no rule made
    bool settledByBlock = false;
    std::string answerFault; // the fault in the answer to the query
    RuleHindrance hindrance = RuleHindrance::none;
    bool allowListEmpty = false; // logged just before a rule fails to match
    std::string match;           // the phrase of the rule that matched
    std::string overruled;       // the phrase of what changed a block to an allow
};

// The rest of the text after `beginning`; nullopt if it begins differently.
std::optional<std::string_view> After(std::string_view text, std::string_view beginning) {
    if (!text.starts_with(beginning)) {
        return {};
    }
    return text.substr(beginning.size());
}

// The text before the last occurrence of `mark`. The result may itself contain `mark`.
std::string_view BeforeLast(std::string_view text, std::string_view mark) {
    return text.substr(0, text.rfind(mark));
}

void Hinder(Findings& findings, RuleHindrance hindrance) {
    if (findings.hindrance < hindrance) {
        findings.hindrance = hindrance;
    }
}

void Settle(Findings& findings, std::string phrase, bool byBlock) {
    findings.settled = std::move(phrase);
    findings.settledByBlock = byBlock;
}

// The phrase for "MID,rule guid=GUID,reply:1".
std::string MatchPhrase(std::string_view text, const std::string& matchedType) {
    constexpr std::string_view beforeGuid = ",rule guid=";
    const std::string_view ids = BeforeLast(text, ",reply:");
    const size_t comma = ids.rfind(beforeGuid);
    if (comma == std::string_view::npos) {
        return {};
    }
    const std::string guid(ids.substr(comma + beforeGuid.size()));
    return "machine " + std::string(ids.substr(0, comma)) + " is allowed for " +
           (matchedType == "web" ? "web rule " + guid : matchedType);
}

// Evaluates a record of the query or its answer. Returns false for any other record.
bool NoteQuery(std::string_view text, Findings& findings) {
    if (After(text, "query dot network error, exception_mode=")) {
        const bool allowed = text.ends_with(",reply=1");
        Settle(findings, allowed ? "network error, exception mode allows" : "network error, exception mode blocks",
               !allowed);
    } else if (After(text, "query dot error, reply=")) {
        Settle(findings, findings.answerFault.empty() ? "query error" : findings.answerFault, true);
    } else if (text == "data format error.") {
        findings.answerFault = "broken answer to the query";
    } else if (text == "param error") {
        findings.answerFault = "empty answer to the query";
    } else if (After(text, "The down_packet (")) {
        findings.answerFault = "malformed answer to the query";
    } else {
        return false;
    }
    return true;
}

// Evaluates a record of a rule. Returns false for any other record.
bool NoteRule(std::string_view text, const std::string& matchedType, Findings& findings) {
    if (text == "receving end not start") {
        Hinder(findings, RuleHindrance::receiverNotStarted);
    } else if (After(text, "query dot result is empty, reply=")) {
        Hinder(findings, RuleHindrance::noDot);
    } else if (After(text, "query dot result mid is empty, reply=")) {
        Hinder(findings, RuleHindrance::emptyDot);
    } else if (After(text, "CMordRecv::IsMatchmid failallow_list_size:")) {
        findings.allowListEmpty = true;
    } else if (After(text, "not match any mid,guid:")) {
        Hinder(findings, findings.allowListEmpty ? RuleHindrance::emptyAllowList : RuleHindrance::noAllowedMachine);
    } else if (const auto match = After(text, "match mid=")) {
        findings.match = MatchPhrase(*match, matchedType);
    } else if (const auto deletion = After(text, "del dot,ret=")) {
        findings.match += deletion->starts_with('1') ? ", its dot is deleted" : ", its dot could not be deleted";
    } else {
        return false;
    }
    return true;
}

// Evaluates a record of a mode or of an event that needs no decision.
void NoteMode(std::string_view text, Findings& findings) {
    if (text == "defender mode is emergency") {
        Settle(findings, "emergency mode allows everything", false);
    } else if (text == "disconnect event not report") {
        Settle(findings, "disconnect", false);
    } else if (After(text, "defender mode is all forbid, reply=")) {
        Settle(findings, "all-forbid mode blocks", true);
    } else if (After(text, "defender mode=")) {
        findings.overruled = "allow-after-decision mode lets it pass";
    } else if (const auto type = After(text, "type=")) {
        findings.overruled = "action table lets type " + std::string(BeforeLast(*type, ",defender mode=")) + " pass";
    }
}

std::string HindrancePhrase(RuleHindrance hindrance) {
    switch (hindrance) {
    case RuleHindrance::none:
        break;
    case RuleHindrance::receiverNotStarted:
        return "the receiver is not started";
    case RuleHindrance::noDot:
        return "no dot is held";
    case RuleHindrance::emptyDot:
        return "the dot names no machine";
    case RuleHindrance::emptyAllowList:
        return "the allow list is empty";
    case RuleHindrance::noAllowedMachine:
        return "no allowed machine holds a dot";
    }
    return {};
}

} // namespace

std::string ReasonOf(const std::vector<std::string_view>& messages, const std::string& matchedType) {
    Findings findings;
    for (std::string_view text : messages) {
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); // some messages begin with a space
        if (!NoteQuery(text, findings) && !NoteRule(text, matchedType, findings)) {
            NoteMode(text, findings);
        }
    }
    if (!findings.match.empty()) {
        return findings.match;
    }
    if (!findings.settled.empty() && !findings.settledByBlock) {
        return findings.settled;
    }
    // A block, which the action table or the mode may have overruled.
    std::string blocked = findings.settled;
    if (blocked.empty()) {
        const bool faultHides = findings.hindrance <= RuleHindrance::noDot && !findings.answerFault.empty();
        blocked = faultHides ? findings.answerFault : HindrancePhrase(findings.hindrance);
    }
    if (findings.overruled.empty()) {
        return blocked;
    }
    return blocked.empty() ? findings.overruled : findings.overruled + " (" + blocked + ")";
}

} // namespace mordhost
