#include "output/explanationText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>

#include "decide/reasonText.h"
#include "frame/values.h"
#include "output/cleanText.h"
#include "output/eventText.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

constexpr size_t listedMachines = 5;
constexpr size_t labelWidth = 16;

class Lines {
public:
    explicit Lines(std::string& out) : m_out(out) {}

    // "  LABEL           TEXT (FILE:LINE:COLUMN)"
    void Line(std::string_view label, std::string_view text, const Location* where = nullptr) {
        m_out += "  ";
        m_out += label;
        m_out.append(label.size() < labelWidth ? labelWidth - label.size() : 1, ' ');
        AppendClean(m_out, text);
        if (where != nullptr && !where->file.empty()) {
            m_out += " (";
            AppendClean(m_out, where->file);
            AppendNumber(where->line);
            AppendNumber(where->column);
            m_out += ')';
        }
        m_out += '\n';
    }

    // A line without a label, as a continuation of the one above.
    void More(const std::string& text, const Location* where = nullptr) { Line("", text, where); }

    void Heading(std::string_view text) {
        m_out += '\n';
        AppendClean(m_out, text);
        m_out += '\n';
    }

private:
    // ":NUMBER"
    void AppendNumber(size_t number) {
        std::array<char, 24> text{':'};
        m_out.append(text.data(), std::to_chars(text.data() + 1, text.data() + text.size(), number).ptr);
    }

    std::string& m_out;
};

// "A, B and 3 more", of the first elements.
template <typename Elements, typename Name>
std::string ListOf(const Elements& elements, Name name) {
    std::string text;
    const size_t listed = std::min(elements.size(), listedMachines);
    for (size_t i = 0; i < listed; ++i) {
        text += (i == 0 ? "" : ", ") + name(elements[i]);
    }
    if (elements.size() > listed) {
        text += " and " + std::to_string(elements.size() - listed) + " more";
    }
    return text.empty() ? "none" : text;
}

const std::string& MachineOf(const AllowListEntry* entry) {
    return entry->mid;
}

class ExplanationWriter {
public:
    ExplanationWriter(std::string& out, const Explanation& explanation, const Policy& policy)
        : m_out(out), m_lines(out), m_explanation(explanation), m_decision(*explanation.decision), m_policy(policy) {}

    void WriteVerdict() {
        const Reason& reason = m_decision.reason;
        m_lines.Line("verdict", VerdictOf(m_decision));
        m_lines.Line("because", reason.text.empty() ? "the library wrote no log records" : reason.text);
        m_lines.Line("reason code",
                     std::string(NameOf(reason.code)) +
                         (reason.overruled ? ", overrules " + std::string(NameOf(*reason.overruled)) : std::string()));
    }

    void WriteNearMisses() {
        if (!m_explanation.nearMisses.empty()) {
            m_lines.Heading("Nearest misses");
            for (const NearMiss& miss : m_explanation.nearMisses) {
                m_lines.Line(miss.code, miss.text, &miss.place->where);
            }
        }
    }

    // `head`, `key` and `allowed` are the lines that do not depend on the decision.
    void WriteRule(const RuleExplanation& explained, const std::string& head, const std::string& key,
                   const std::string& allowed) {
        m_out += head;
        WriteConditions(explained);
        m_out += key;
        m_lines.Line("ids held", HeldText(explained), explained.dot == nullptr ? nullptr : &explained.dot->where);
        m_out += allowed;
        if (m_explanation.wasAsked) {
            m_lines.Line("in both", ListOf(explained.both, MachineOf),
                         explained.both.empty() ? nullptr : &explained.both.front()->keyPlace.where);
        }
        m_lines.Line("outcome", OutcomeText(explained));
    }

    void WriteModes() {
        m_lines.Heading("Then");
        m_lines.Line("query", m_decision.failure ? NameOf(static_cast<uint32_t>(*m_decision.failure), failureNames)
                                                 : (m_explanation.wasAsked ? "answered" : "none"));
        if (m_decision.failure == Failure::networkError) {
            WriteMode("exception mode", NameOf(m_explanation.exceptionMode, exceptionModes),
                      m_explanation.exceptionModePlace);
        }
        WriteMode("defender mode",
                  NameOf(m_explanation.defenderMode, defenderModes) +
                      (m_explanation.modeHasEnded ? ", because the mode before has ended" : ""),
                  m_explanation.defenderModePlace);
        if (m_explanation.defenderMode == MODE_ACTION_TABLE) {
            WriteAction();
        }
        m_lines.Line("flag 0x10", m_explanation.isFlagged ? "set: an allow becomes allow (flagged)" : "not set");
        if (m_decision.deletion) {
            m_lines.Line("dot", "of rule " + m_decision.deletion->guid +
                                    (m_decision.deletion->done ? ": deleted" : ": could not be deleted"));
        }
        m_lines.Line("reports", std::to_string(m_decision.reports.size()));
    }

private:
    void WriteConditions(const RuleExplanation& explained) {
        if (explained.conditions.empty()) {
            m_lines.Line("applies", "to every connection: the rule has no conditions");
        }
        std::string_view label = "applies";
        for (const MetCondition& condition : explained.conditions) {
            m_lines.Line(label,
                         std::string(condition.name) + ": " + condition.value +
                             (condition.value == condition.range ? "" : " is in " + condition.range),
                         &condition.where);
            label = "and";
        }
    }

    std::string HeldText(const RuleExplanation& explained) const {
        if (m_explanation.wasAsked) {
            const bool wasDeleted = explained.held.empty() && explained.dot != nullptr;
            return wasDeleted ? "none: an earlier decision deleted the dot" : ListOf(explained.held, std::identity());
        }
        return m_decision.failure ? "unknown: the query failed" : "unknown: the library did not ask";
    }

    static std::string OutcomeText(const RuleExplanation& explained) {
        if (!explained.outcome) {
            return "the library did not reach this rule";
        }
        return explained.outcome == ReasonCode::machineAllowed ? "machine " + explained.machine + " is allowed"
                                                               : std::string(PhraseOf(*explained.outcome));
    }

    void WriteAction() {
        const ActionRow* const row = m_explanation.action;
        const std::string& type = m_policy.rules[m_decision.rules.front()].type;
        m_lines.Line("action table",
                     row == nullptr ? "no row for type " + type : type + ": " + std::to_string(row->action),
                     row == nullptr ? nullptr : &row->place.where);
    }

    void WriteMode(std::string_view label, const std::string& name, const DocumentPlace* place) {
        m_lines.Line(label, name + (place == nullptr ? ", the default of the library" : ""),
                     place == nullptr ? nullptr : &place->where);
    }

    std::string& m_out;
    Lines m_lines;
    const Explanation& m_explanation;
    const Decision& m_decision;
    const Policy& m_policy;
};

} // namespace

const ExplanationText::CommonLines& ExplanationText::LinesOf(const RuleExplanation& explained) {
    CommonLines& common = m_rules[explained.rule];
    if (common.head.empty()) {
        const Rule& rule = m_policy.rules[explained.rule];
        Lines(common.head)
            .Heading("Rule " + rule.guid + ", type " + rule.type +
                     (rule.place.where.file.empty() ? "" : " (" + rule.place.where.Text() + ')'));
        Lines(common.key).Line("protocol key", explained.key + (rule.type == "web" ? ", the guid of a web rule" : ""));
        const auto& allowed = *explained.allowed;
        Lines(common.allowed)
            .Line("ids allowed", ListOf(allowed, MachineOf),
                  allowed.empty() ? nullptr : &allowed.front()->keyPlace.where);
    }
    return common;
}

void ExplanationText::Append(std::string& out, const Explanation& explanation) {
    const ConnectionEvent& event = explanation.decision->event;
    out += event.line == 0 ? std::string("Event") : "Event in line " + std::to_string(event.line);
    out += event.name.empty() ? "" : " \"" + CleanText(event.name) + '"';
    out += ": " + EventText(OutputFormat::text).Of(event);
    ExplanationWriter writer(out, explanation, m_policy);
    writer.WriteVerdict();
    for (const RuleExplanation& rule : explanation.rules) {
        const CommonLines& common = LinesOf(rule);
        writer.WriteRule(rule, common.head, common.key, common.allowed);
    }
    if (explanation.decision->asked) {
        writer.WriteModes();
    }
    writer.WriteNearMisses();
}

void AppendOpenings(std::string& out, const std::vector<Opening>& openings) {
    Lines lines(out);
    lines.Heading("Changes that allow it, each tried with the library");
    for (const Opening& opening : openings) {
        lines.Line(opening.verdict, opening.text, opening.place ? &opening.place->where : nullptr);
    }
    if (openings.empty()) {
        lines.Line("none", "no single change that was tried allows it");
    }
}

void AppendRecords(std::string& out, const WrittenRecords& records) {
    Lines lines(out);
    lines.Heading("Log records of the library");
    size_t begin = 0;
    for (const size_t end : records.ends) {
        std::string_view record = std::string_view(records.text).substr(begin, end - begin);
        while (!record.empty() && (record.back() == '\n' || record.back() == '\r')) {
            record.remove_suffix(1);
        }
        out += "  " + CleanText(record) + '\n';
        begin = end;
    }
}

} // namespace mordhost
