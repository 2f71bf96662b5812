// mordhost suggest EVENTS...
#include <iostream>

#include "cli/commandList.h"
#include "cli/shownRecording.h"
#include "cli/usageArguments.h"
#include "output/requireWritten.h"
#include "output/suggestionOutput.h"
#include "policy/policyReader.h"
#include "usage/suggester.h"

namespace mordhost {

namespace {

constexpr unsigned usualMost = 3;

class SuggestCommand final : public Command {
public:
    std::string_view Name() const override { return "suggest"; }

    void Declare(Arguments& arguments) override {
        m_usage.Declare(arguments);
        arguments.Text("--policy", m_policy);
        arguments.Number("--most", m_most);
    }

    void Run() override {
        const Policy policy = m_policy.empty() ? Policy() : ReadPolicy(m_policy);
        m_usage.Require(Name(), policy);
        FileRecording files(m_usage.events, FileRecording::Use::repeated);
        ShownRecording recording(files);
        if (m_policy.empty()) {
            const Draft draft = MakeDraft(recording, m_usage.Session(), Most());
            recording.Finish();
            WriteDraft(std::cout, draft, m_usage.format);
        } else {
            TrialSession session(policy, m_usage.Session());
            const Suggestions suggestions = Suggester(policy, session, recording, Most()).Run();
            recording.Finish();
            WriteSuggestions(std::cout, suggestions, m_usage.format);
        }
        RequireWritten(std::cout, standardOutputName);
    }

private:
    size_t Most() const { return m_most.value_or(usualMost); }

    UsageArguments m_usage;
    std::string m_policy;
    std::optional<unsigned> m_most; // events that each entry names
};

} // namespace

std::unique_ptr<Command> MakeSuggestCommand() {
    return std::make_unique<SuggestCommand>();
}

} // namespace mordhost
