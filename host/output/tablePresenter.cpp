#include <cstdio>

#include "output/counted.h"
#include "output/presenter.h"

namespace mordhost {

namespace {

// In microseconds below a millisecond, in milliseconds otherwise.
std::string DurationText(std::chrono::nanoseconds duration) {
    const double microseconds = static_cast<double>(duration.count()) / 1000;
    char text[40];
    std::snprintf(text, sizeof text, microseconds < 1000 ? "%.1f us" : "%.2f ms",
                  microseconds < 1000 ? microseconds : microseconds / 1000);
    return text;
}

std::string VerdictsText(const Statistics& statistics) {
    std::string text;
    for (const auto& [verdict, count] : statistics.Verdicts()) {
        text += (text.empty() ? ": " : ", ") + std::to_string(count) + ' ' + verdict;
    }
    return text;
}

class TablePresenter final : public Presenter {
public:
    TablePresenter(std::ostream& out, const Policy& policy, const TableStyle& style)
        : m_out(out), m_policy(policy), m_title(style.title), m_durations(style.durations),
          m_table(out, style.widths, style.colour) {}

    void Begin() override {
        m_out << m_title << "\n\n";
        m_table.Heading();
    }

    void Show(const Decision& decision) override { m_table.Row(decision, m_policy); }

    void End(const Outcome& outcome) override {
        const Statistics& statistics = outcome.statistics;
        m_out << '\n' << Counted(statistics.Events(), "event") << VerdictsText(statistics) << '\n';
        m_out << Counted(outcome.calls.queries, "query", "queries") << ", " << Counted(statistics.Reports(), "report")
              << ", " << Counted(statistics.Deleted(), "dot") << " deleted, " << outcome.dotsLeft << " left\n";
        if (statistics.Decisions() == 0 || !m_durations) {
            return;
        }
        m_out << "time per decision: median " << DurationText(statistics.Percentile(50)) << ", 99th percentile "
              << DurationText(statistics.Percentile(99))
              << (outcome.timesIncludeLogging ? " (writing the log records included)" : "") << '\n';
    }

private:
    std::ostream& m_out;
    const Policy& m_policy;
    const std::string m_title;
    const bool m_durations;
    Table m_table;
};

} // namespace

std::unique_ptr<Presenter> MakeTablePresenter(std::ostream& out, const Policy& policy, const TableStyle& style) {
    return std::make_unique<TablePresenter>(out, policy, style);
}

} // namespace mordhost
