#include "decide/reason.h"

#include <algorithm>

#include "decide/reasonText.h"

namespace mordhost {

namespace {

// Between the machine id and the guid in the record of a match.
constexpr std::string_view between = ",rule guid=";

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

// How far the evaluation of a rule got. Of several rules that do not match, the one that got furthest gives the reason.
int Progress(ReasonCode code) {
    switch (code) {
    case ReasonCode::receiverNotStarted:
        return 1;
    case ReasonCode::noDot:
        return 2;
    case ReasonCode::dotNamesNoMachine:
        return 3;
    case ReasonCode::allowListEmpty:
        return 4;
    case ReasonCode::noAllowedMachine:
        return 5;
    default:
        return 0;
    }
}

// Evaluates the records of one event.
class RecordReader {
public:
    RecordReader(const EventRules& rules, std::vector<RuleOutcome>& outcomes) : m_rules(rules), m_outcomes(outcomes) {}

    void Note(std::string_view text) {
        if (!NoteQuery(text) && !NoteRule(text)) {
            NoteMode(text);
        }
    }

    // The number of rules with an outcome.
    size_t OutcomeCount() const { return m_count; }

    void Conclude(Reason& reason) const {
        if (m_match != nullptr) {
            reason.code = m_dotKept ? ReasonCode::machineAllowedDotKept : ReasonCode::machineAllowed;
            AppendMatch(reason.text);
            return;
        }
        if (m_settled != ReasonCode::unknown && !m_settledByBlock) {
            reason.code = m_settled;
            reason.text = PhraseOf(m_settled);
            return;
        }
        // A block, which the action table or the mode may have overruled.
        const ReasonCode block = BlockCode();
        if (m_overruling == ReasonCode::unknown) {
            reason.code = block;
            reason.text = PhraseOf(block);
            return;
        }
        reason.code = m_overruling;
        AppendOverruling(reason.text);
        if (block != ReasonCode::unknown) {
            reason.overruled = block;
            reason.text += " (";
            reason.text += PhraseOf(block);
            reason.text += ')';
        }
    }

private:
    void Settle(ReasonCode code, bool byBlock) {
        m_settled = code;
        m_settledByBlock = byBlock;
    }

    // A record of the query or its answer. Returns false for any other record.
    bool NoteQuery(std::string_view text) {
        if (After(text, "query dot network error, exception_mode=")) {
            const bool allowed = text.ends_with(",reply=1");
            Settle(allowed ? ReasonCode::networkErrorAllowed : ReasonCode::networkErrorBlocked, !allowed);
        } else if (After(text, "query dot error, reply=")) {
            Settle(m_answerFault == ReasonCode::unknown ? ReasonCode::queryError : m_answerFault, true);
        } else if (text == "data format error.") {
            m_answerFault = ReasonCode::brokenAnswer;
        } else if (text == "param error") {
            m_answerFault = ReasonCode::emptyAnswer;
        } else if (After(text, "The down_packet (")) {
            m_answerFault = ReasonCode::malformedAnswer;
        } else {
            return false;
        }
        return true;
    }

    // A record of a rule. Returns false for any other record.
    bool NoteRule(std::string_view text) {
        if (text == "receving end not start") { // sic
            Hinder(ReasonCode::receiverNotStarted, {});
        } else if (const auto noDot = After(text, "query dot result is empty, reply=")) {
            Hinder(ReasonCode::noDot, GuidBehind(*noDot, ",rule guid"));
        } else if (const auto emptyDot = After(text, "query dot result mid is empty, reply=")) {
            Hinder(ReasonCode::dotNamesNoMachine, GuidBehind(*emptyDot, ",rule guid"));
        } else if (After(text, "CMordRecv::IsMatchmid failallow_list_size:")) {
            m_allowListEmpty = true;
        } else if (const auto noMatch = After(text, "not match any mid,guid:")) {
            Hinder(m_allowListEmpty ? ReasonCode::allowListEmpty : ReasonCode::noAllowedMachine,
                   BeforeLast(*noMatch, ",reply:"));
        } else if (const auto match = After(text, "match mid=")) {
            NoteMatch(BeforeLast(*match, ",reply:"));
        } else if (const auto deletion = After(text, "del dot,ret=")) {
            m_dotDeleted = deletion->starts_with('1');
            m_dotKept = !m_dotDeleted;
        } else {
            return false;
        }
        return true;
    }

    // A record of a mode or of an event that needs no decision.
    void NoteMode(std::string_view text) {
        if (text == "defender mode is emergency") {
            Settle(ReasonCode::emergencyMode, false);
        } else if (text == "disconnect event not report") {
            Settle(ReasonCode::disconnect, false);
        } else if (After(text, "defender mode is all forbid, reply=")) {
            Settle(ReasonCode::allForbidMode, true);
        } else if (After(text, "defender mode=")) {
            m_overruling = ReasonCode::afterDecisionMode;
        } else if (const auto type = After(text, "type=")) {
            m_overruling = ReasonCode::actionTable;
            m_passedType = BeforeLast(*type, ",defender mode=");
        }
    }

    // The guid in "0,rule guidGUID". The digit before the mark cannot contain it.
    static std::string_view GuidBehind(std::string_view text, std::string_view mark) {
        const size_t at = text.find(mark);
        return at == std::string_view::npos ? std::string_view() : text.substr(at + mark.size());
    }

    void Hinder(ReasonCode code, std::string_view guid) {
        if (Progress(m_hindrance) < Progress(code)) {
            m_hindrance = code;
        }
        const auto hasGuid = [code, guid](const Rule& rule) {
            return code == ReasonCode::receiverNotStarted || rule.guid == guid;
        };
        if (const Rule* const rule = NextRule(hasGuid)) {
            AddOutcome(*rule, code, {});
        }
    }

    // "MID,rule guid=GUID". Each of the two may contain the text between them.
    void NoteMatch(std::string_view text) {
        const auto endsWithGuid = [text](const Rule& rule) {
            return text.ends_with(rule.guid) && text.substr(0, text.size() - rule.guid.size()).ends_with(between);
        };
        if (const Rule* const rule = NextRule(endsWithGuid)) {
            m_match = rule;
            m_machine = text.substr(0, text.size() - rule->guid.size() - between.size());
            AddOutcome(*rule, ReasonCode::machineAllowed, m_machine);
        }
    }

    // The first rule from the current one on that `fits`, or null. The library looks at the rules in their order; one
    // is skipped if its record is lost.
    template <typename Fits>
    const Rule* NextRule(Fits fits) {
        const auto begin = m_rules.selected.begin() + static_cast<std::ptrdiff_t>(m_next);
        const auto found =
            std::find_if(begin, m_rules.selected.end(), [&](size_t index) { return fits(m_rules.all[index]); });
        if (found == m_rules.selected.end()) {
            return nullptr;
        }
        m_next = static_cast<size_t>(found - m_rules.selected.begin()) + 1;
        return &m_rules.all[*found];
    }

    void AddOutcome(const Rule& rule, ReasonCode code, std::string_view machine) {
        if (m_count == m_outcomes.size()) {
            m_outcomes.emplace_back();
        }
        RuleOutcome& outcome = m_outcomes[m_count++];
        outcome.rule = static_cast<size_t>(&rule - m_rules.all.data());
        outcome.code = code;
        outcome.machine = machine;
    }

    ReasonCode BlockCode() const {
        if (m_settled != ReasonCode::unknown) {
            return m_settled;
        }
        const bool faultHides =
            Progress(m_hindrance) <= Progress(ReasonCode::noDot) && m_answerFault != ReasonCode::unknown;
        return faultHides ? m_answerFault : m_hindrance;
    }

    void AppendMatch(std::string& text) const {
        text += "machine ";
        text += m_machine;
        text += " is allowed for ";
        text += m_match->type == "web" ? "web rule " + m_match->guid : m_match->type;
        text += m_dotDeleted ? ", its dot is deleted" : m_dotKept ? ", its dot could not be deleted" : "";
    }

    void AppendOverruling(std::string& text) const {
        if (m_overruling == ReasonCode::actionTable) {
            text += "action table lets type ";
            text += m_passedType;
            text += " pass";
        } else {
            text += PhraseOf(m_overruling);
        }
    }

    const EventRules& m_rules;
    std::vector<RuleOutcome>& m_outcomes; // longer than m_count, to reuse memory
    size_t m_count = 0;
    size_t m_next = 0;                          // the place in `selected` of the next rule
    ReasonCode m_settled = ReasonCode::unknown; // a decision that no rule made
    bool m_settledByBlock = false;
    ReasonCode m_answerFault = ReasonCode::unknown;
    ReasonCode m_hindrance = ReasonCode::unknown; // of the rule that got furthest
    bool m_allowListEmpty = false;                // logged just before a rule fails to match
    const Rule* m_match = nullptr;
    std::string_view m_machine; // that matched
    bool m_dotDeleted = false;
    bool m_dotKept = false;
    ReasonCode m_overruling = ReasonCode::unknown;
    std::string_view m_passedType; // the rule type that the action table lets pass
};

} // namespace

void FindReason(const std::vector<std::string_view>& messages, const EventRules& rules, Reason& reason) {
    reason.code = ReasonCode::unknown;
    reason.text.clear();
    reason.overruled.reset();
    RecordReader reader(rules, reason.rules);
    for (std::string_view text : messages) {
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); // some messages begin with a space
        reader.Note(text);
    }
    reader.Conclude(reason);
    reason.rules.resize(reader.OutcomeCount());
}

} // namespace mordhost
