#include "compare/rehearsalOutput.h"
#include "decide/decision.h"
#include "output/jsonText.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

void AppendCombination(JsonMembers& members, const Combination& combination) {
    members.Text("failure", combination.failure->name);
    members.Text("defender_mode", NameOf(combination.defenderMode, defenderModes));
    members.Text("exception_mode", NameOf(combination.exceptionMode, exceptionModes));
}

class RehearsalJson final : public RehearsalOutput {
public:
    RehearsalJson(std::ostream& out, const std::vector<Combination>& combinations, bool isLines)
        : m_out(out), m_combinations(combinations), m_isLines(isLines) {}

    void Begin() override { m_out << (m_isLines ? "" : "{\"events\":["); }

    void Show(const ConnectionEvent& event, const RehearsedEvent& rehearsed) override {
        m_text.assign(m_isLines ? "{" : m_isFirst ? "\n{" : ",\n{");
        m_isFirst = false;
        JsonMembers members(m_text);
        members.Count("line", event.line);
        members.TextOrNull("time", event.time);
        members.TextOrNull("name", event.name);
        members.Text("verdict", VerdictOfReply(rehearsed.usual));
        members.Name("changes") += '[';
        for (size_t i = 0; i < m_combinations.size(); ++i) {
            if (rehearsed.replies[i] == rehearsed.usual) {
                continue;
            }
            m_text += m_text.back() == '[' ? "{" : ",{";
            JsonMembers change(m_text);
            AppendCombination(change, m_combinations[i]);
            change.Text("verdict", VerdictOfReply(rehearsed.replies[i]));
            m_text += '}';
        }
        m_out << m_text << (m_isLines ? "]}\n" : "]}");
    }

    void End(const Rehearsal& rehearsal) override {
        m_text.assign(m_isLines ? "{\"summary\":{" : "\n],\"summary\":{");
        JsonMembers members(m_text);
        members.Count("events", rehearsal.Events());
        members.Count("without_rule", rehearsal.WithoutRule());
        members.Name("combinations") += '[';
        for (size_t i = 0; i < m_combinations.size(); ++i) {
            m_text += m_text.back() == '[' ? "{" : ",{";
            JsonMembers row(m_text);
            AppendCombination(row, m_combinations[i]);
            row.Name("verdicts") += '{';
            JsonMembers verdicts(m_text);
            for (const auto& [reply, events] : rehearsal.Figures()[i].replies) {
                verdicts.Count(VerdictOfReply(reply), events);
            }
            m_text += '}';
            row.Count("changed", rehearsal.Figures()[i].changed);
            m_text += '}';
        }
        m_out << m_text << "]}}\n";
    }

private:
    std::ostream& m_out;
    const std::vector<Combination>& m_combinations;
    const bool m_isLines;
    bool m_isFirst = true;
    std::string m_text;
};

} // namespace

std::unique_ptr<RehearsalOutput> MakeRehearsalJson(std::ostream& out, const std::vector<Combination>& combinations,
                                                   bool isLines) {
    return std::make_unique<RehearsalJson>(out, combinations, isLines);
}

} // namespace mordhost
