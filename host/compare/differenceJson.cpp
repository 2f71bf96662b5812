#include "compare/differenceOutput.h"
#include "output/jsonText.h"

namespace mordhost {

namespace {

void AppendCauses(std::string& out, const Difference& difference) {
    out += '[';
    for (const Cause& cause : difference.causes) {
        out += out.back() == '[' ? "{" : ",{";
        JsonMembers members(out);
        members.Text("guid", cause.guid);
        members.Text("policy", cause.deletion.side == Side::before ? "old" : "new");
        members.Count("line", cause.deletion.line);
        out += '}';
    }
    out += ']';
}

void AppendSide(std::string& out, const Detail& detail) {
    out += '{';
    JsonMembers members(out);
    members.Raw("decision", detail.record);
    members.Raw("setting", detail.setting);
    out += '}';
}

void AppendDifference(std::string& out, const Difference& difference) {
    out += '{';
    JsonMembers members(out);
    members.Count("line", difference.event.line);
    members.Text("change", difference.HasOtherVerdict() ? "verdict" : "reason");
    AppendCauses(members.Name("follows_from"), difference);
    AppendSide(members.Name("old"), difference.beforeDetail);
    AppendSide(members.Name("new"), difference.afterDetail);
    out += '}';
}

void AppendFigures(std::string& out, const ComparisonFigures& figures) {
    out += '{';
    JsonMembers members(out);
    members.Count("events", figures.events);
    members.Count("verdicts_changed", figures.verdictChanges);
    members.Count("reasons_changed", figures.reasonChanges);
    members.Count("following", figures.following);
    members.Name("matrix") += '[';
    for (const auto& [verdicts, events] : figures.matrix) {
        out += out.back() == '[' ? "{" : ",{";
        JsonMembers cell(out);
        cell.Text("old", verdicts.first);
        cell.Text("new", verdicts.second);
        cell.Count("events", events);
        out += '}';
    }
    out += "]}";
}

class DifferenceJson final : public DifferenceOutput {
public:
    DifferenceJson(std::ostream& out, bool isLines) : m_out(out), m_isLines(isLines) {}

    void Begin() override { m_out << (m_isLines ? "" : "{\"differences\":["); }

    void Show(const Difference& difference) override {
        m_text.assign(m_isLines ? "" : m_isFirst ? "\n" : ",\n");
        m_isFirst = false;
        AppendDifference(m_text, difference);
        m_out << m_text << (m_isLines ? "\n" : "");
    }

    void End(const ComparisonFigures& figures) override {
        m_text.assign(m_isLines ? "{" : "\n],");
        m_text += "\"summary\":";
        AppendFigures(m_text, figures);
        m_out << m_text << "}\n";
    }

private:
    std::ostream& m_out;
    const bool m_isLines;
    bool m_isFirst = true;
    std::string m_text;
};

} // namespace

std::unique_ptr<DifferenceOutput> MakeDifferenceJson(std::ostream& out, bool isLines) {
    return std::make_unique<DifferenceJson>(out, isLines);
}

} // namespace mordhost
