#include <algorithm>
#include <set>

#include <rapidjson/document.h>

#include "compare/differenceOutput.h"
#include "output/cleanText.h"
#include "output/counted.h"
#include "output/eventText.h"

namespace mordhost {

namespace {

constexpr rapidjson::SizeType mostRules = 8;

using Value = rapidjson::Value;

std::string TextOf(const Value& object, const char* name) {
    const Value& value = object[name];
    return value.IsString() ? CleanText({value.GetString(), value.GetStringLength()}) : std::string("-");
}

// "FILE:LINE:COLUMN"
std::string PlaceOf(const Value& object) {
    return TextOf(object, "file") + ':' + std::to_string(object["line"].GetUint64()) + ':' +
           std::to_string(object["column"].GetUint64());
}

void AppendRules(std::string& out, const Value& rules) {
    rapidjson::SizeType shown = 0;
    rapidjson::SizeType looked = 0;
    for (const Value& rule : rules.GetArray()) {
        looked += rule["outcome"].IsNull() ? 0U : 1U;
        if (!rule["outcome"].IsNull() && shown < mostRules) {
            out += "        " + PlaceOf(rule) + ": rule " + TextOf(rule, "guid") + ", type " + TextOf(rule, "type") +
                   ": " + TextOf(rule, "outcome") + '\n';
            ++shown;
        }
    }
    if (looked > shown) {
        out += "        and " + Counted(looked - shown, "more rule") + '\n';
    }
}

void AppendSide(std::string& out, const char* name, const Brief& brief, const Detail& detail) {
    out += std::string("  ") + name + ": " + brief.verdict;
    out += brief.reason.empty() ? "\n" : ", " + CleanText(brief.reason) + '\n';
    rapidjson::Document record;
    record.Parse(detail.record.c_str());
    rapidjson::Document setting;
    setting.Parse(detail.setting.c_str());
    if (!record.IsObject()) {
        return;
    }
    AppendRules(out, record["rules"]);
    if (const Value& entry = record["allowed_by"]; entry.IsObject()) {
        out += "        " + PlaceOf(entry) + ": entry of the allow list\n";
    }
    if (setting.IsObject()) {
        out += "        " + PlaceOf(setting) + ": " + TextOf(setting, "what") + '\n';
    }
}

std::string Padded(const std::string& text, size_t width, bool isNumber) {
    const std::string blanks(width > text.size() ? width - text.size() : 0, ' ');
    return isNumber ? blanks + text : text + blanks;
}

class DifferenceText final : public DifferenceOutput {
public:
    DifferenceText(std::ostream& out, ComparedTitles titles) : m_out(out), m_titles(std::move(titles)) {}

    void Begin() override { m_out << "old: " << m_titles.before << "\nnew: " << m_titles.after << "\n\n"; }

    void Show(const Difference& difference) override {
        m_text = "line " + std::to_string(difference.event.line);
        m_text += difference.event.name.empty() ? "" : " \"" + CleanText(difference.event.name) + '"';
        m_text += ": " + m_events.Of(difference.event);
        AppendSide(m_text, "old", difference.before, difference.beforeDetail);
        AppendSide(m_text, "new", difference.after, difference.afterDetail);
        for (const Cause& cause : difference.causes) {
            m_text += std::string("  follows from line ") + std::to_string(cause.deletion.line) + ": only the " +
                      (cause.deletion.side == Side::before ? "old" : "new") + " policy deleted the dot of " +
                      CleanText(cause.guid) + '\n';
        }
        m_out << m_text << '\n';
    }

    void End(const ComparisonFigures& figures) override {
        m_out << Counted(figures.events, "event") << ": " << Counted(figures.verdictChanges, "verdict") << " changed, "
              << Counted(figures.reasonChanges, "reason") << " changed under the same verdict; "
              << Counted(figures.following, "difference") << " after a dot that only one policy deleted\n";
        WriteMatrix(figures);
    }

private:
    void WriteMatrix(const ComparisonFigures& figures) {
        std::set<std::string> before;
        std::set<std::string> after;
        for (const auto& [verdicts, events] : figures.matrix) {
            before.insert(verdicts.first);
            after.insert(verdicts.second);
        }
        if (before.empty()) {
            return;
        }
        constexpr size_t first = 17;
        constexpr size_t least = 9;
        m_out << '\n' << Padded("old \\ new", first, false);
        for (const std::string& verdict : after) {
            m_out << "  " << Padded(verdict, least, true);
        }
        m_out << '\n';
        for (const std::string& row : before) {
            m_out << Padded(row, first, false);
            for (const std::string& column : after) {
                const auto cell = figures.matrix.find({row, column});
                const size_t events = cell == figures.matrix.end() ? 0 : cell->second;
                m_out << "  " << Padded(std::to_string(events), std::max(least, column.size()), true);
            }
            m_out << '\n';
        }
    }

    std::ostream& m_out;
    const ComparedTitles m_titles;
    EventText m_events{OutputFormat::text};
    std::string m_text;
};

} // namespace

std::unique_ptr<DifferenceOutput> MakeDifferenceText(std::ostream& out, const ComparedTitles& titles) {
    return std::make_unique<DifferenceText>(out, titles);
}

} // namespace mordhost
