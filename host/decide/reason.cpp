#include "decide/reason.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace mordhost {

namespace {

// What stood in the way of a rule, the later ones telling more than the earlier ones.
enum class RuleHindrance { none, receiverNotStarted, noDot, emptyDot, emptyAllowList, noAllowedMachine };

// What the records of one event tell.
struct Findings {
    std::string settled; // the phrase of a way out that ends the decision before or without the rules
    bool settledByBlock = false;
    std::string answerFault; // what was wrong with the answer
    RuleHindrance hindrance = RuleHindrance::none;
    bool allowListEmpty = false; // said just before a rule fails to match
    std::string match;           // the phrase of the rule that matched
    std::string overruled;       // the phrase of what lets a block pass
};

// What stands behind `beginning`, if the text begins with it.
std::optional<std::string_view> Behind(std::string_view text, std::string_view beginning) {
    if (!text.starts_with(beginning)) {
        return {};
    }
    return text.substr(beginning.size());
}

// Splits at the last place of `mark`, so that what stands before it may hold anything.
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

// "MID,rule guid=GUID,reply:1"
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

// The records of the query and its answer.
bool NoteQuery(std::string_view text, Findings& findings) {
    if (Behind(text, "query dot network error, exception_mode=")) {
        const bool allowed = text.ends_with(",reply=1");
        Settle(findings, allowed ? "network error, exception mode allows" : "network error, exception mode blocks",
               !allowed);
    } else if (Behind(text, "query dot error, reply=")) {
        Settle(findings, findings.answerFault.empty() ? "query error" : findings.answerFault, true);
    } else if (text == "data format error.") {
        findings.answerFault = "broken answer to the query";
    } else if (text == "param error") {
        findings.answerFault = "empty answer to the query";
    } else if (Behind(text, "The down_packet (")) {
        findings.answerFault = "malformed answer to the query";
    } else {
        return false;
    }
    return true;
}

// The records of one rule.
bool NoteRule(std::string_view text, const std::string& matchedType, Findings& findings) {
    if (text == "receving end not start") {
        Hinder(findings, RuleHindrance::receiverNotStarted);
    } else if (Behind(text, "query dot result is empty, reply=")) {
        Hinder(findings, RuleHindrance::noDot);
    } else if (Behind(text, "query dot result mid is empty, reply=")) {
        Hinder(findings, RuleHindrance::emptyDot);
    } else if (Behind(text, "CMordRecv::IsMatchmid failallow_list_size:")) {
        findings.allowListEmpty = true;
    } else if (Behind(text, "not match any mid,guid:")) {
        Hinder(findings, findings.allowListEmpty ? RuleHindrance::emptyAllowList : RuleHindrance::noAllowedMachine);
    } else if (const auto match = Behind(text, "match mid=")) {
        findings.match = MatchPhrase(*match, matchedType);
    } else if (const auto deletion = Behind(text, "del dot,ret=")) {
        findings.match += deletion->starts_with('1') ? ", its dot is deleted" : ", its dot could not be deleted";
    } else {
        return false;
    }
    return true;
}

// The records of the modes, and of the events that need no decision.
void NoteMode(std::string_view text, Findings& findings) {
    if (text == "defender mode is emergency") {
        Settle(findings, "emergency mode allows everything", false);
    } else if (text == "disconnect event not report") {
        Settle(findings, "disconnect", false);
    } else if (Behind(text, "defender mode is all forbid, reply=")) {
        Settle(findings, "all-forbid mode blocks", true);
    } else if (Behind(text, "defender mode=")) {
        findings.overruled = "allow-after-decision mode lets it pass";
    } else if (const auto type = Behind(text, "type=")) {
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
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); // some begin with a blank
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
    // A block, which one of the two may have let pass.
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
