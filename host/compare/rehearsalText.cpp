#include <map>

#include "compare/rehearsalOutput.h"
#include "decide/decision.h"
#include "frame/values.h"
#include "output/cleanText.h"
#include "output/counted.h"
#include "output/eventText.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

std::string Padded(const std::string& text, size_t width) {
    return text + std::string(width > text.size() ? width - text.size() : 0, ' ');
}

std::string Number(size_t number, size_t width) {
    const std::string text = std::to_string(number);
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

class RehearsalText final : public RehearsalOutput {
public:
    RehearsalText(std::ostream& out, const std::vector<Combination>& combinations, std::string title)
        : m_out(out), m_combinations(combinations), m_title(std::move(title)) {}

    void Begin() override { m_out << m_title << "\n\n"; }

    void Show(const ConnectionEvent& event, const RehearsedEvent& rehearsed) override {
        m_text = "line " + std::to_string(event.line);
        m_text += event.name.empty() ? "" : " \"" + CleanText(event.name) + '"';
        m_text += ": " + m_events.Of(event) + "  usually: " + VerdictOfReply(rehearsed.usual) + '\n';
        for (size_t i = 0; i < m_combinations.size();) {
            i = AppendChanges(i, rehearsed);
        }
        m_out << m_text << '\n';
    }

    void End(const Rehearsal& rehearsal) override {
        m_out << Counted(rehearsal.Events(), "event") << ", " << rehearsal.WithoutRule()
              << " without a rule\n\n"
                 "FAILURE        DEFENDER MODE         EXCEPTION  ALLOW     FLAGGED   BLOCK     CHANGED\n";
        for (size_t i = 0; i < m_combinations.size(); ++i) {
            WriteRow(m_combinations[i], rehearsal.Figures()[i]);
        }
    }

private:
    // Appends the changes under the failure of the combination at `first`, one line per verdict. Returns the index of
    // the first combination with another failure.
    size_t AppendChanges(size_t first, const RehearsedEvent& rehearsed) {
        std::map<uint32_t, std::string> byReply;
        size_t i = first;
        for (; i < m_combinations.size() && m_combinations[i].failure == m_combinations[first].failure; i += 2) {
            AppendModes(i, rehearsed, byReply);
        }
        for (const auto& [reply, modes] : byReply) {
            m_text += "  " + std::string(m_combinations[first].failure->name) + ": " + VerdictOfReply(reply) + " in " +
                      modes + '\n';
        }
        return i;
    }

    // The combinations at `i` and after it differ in the exception mode alone.
    void AppendModes(size_t i, const RehearsedEvent& rehearsed, std::map<uint32_t, std::string>& byReply) const {
        const std::string mode = NameOf(m_combinations[i].defenderMode, defenderModes);
        const bool isOne = rehearsed.replies[i] == rehearsed.replies[i + 1];
        for (size_t one = i; one < i + (isOne ? 1 : 2); ++one) {
            if (rehearsed.replies[one] != rehearsed.usual) {
                std::string& modes = byReply[rehearsed.replies[one]];
                modes += modes.empty() ? "" : ", ";
                modes +=
                    isOne ? mode
                          : mode + " with exception mode " + NameOf(m_combinations[one].exceptionMode, exceptionModes);
            }
        }
    }

    void WriteRow(const Combination& combination, const CombinationFigures& figures) {
        constexpr size_t width = 8;
        const auto count = [&figures](uint32_t reply) {
            const auto found = figures.replies.find(reply);
            return Number(found == figures.replies.end() ? 0 : found->second, width);
        };
        m_out << Padded(std::string(combination.failure->name), 15)
              << Padded(NameOf(combination.defenderMode, defenderModes), 22)
              << Padded(NameOf(combination.exceptionMode, exceptionModes), 8) << count(REPLY_ALLOW) << "  "
              << count(REPLY_ALLOW_FLAGGED) << "    " << count(REPLY_BLOCK) << "  "
              << Number(figures.changed, width + 2) << '\n';
    }

    std::ostream& m_out;
    const std::vector<Combination>& m_combinations;
    const std::string m_title;
    EventText m_events{OutputFormat::text};
    std::string m_text;
};

} // namespace

std::unique_ptr<RehearsalOutput> MakeRehearsalText(std::ostream& out, const std::vector<Combination>& combinations,
                                                   const std::string& title) {
    return std::make_unique<RehearsalText>(out, combinations, title);
}

} // namespace mordhost
