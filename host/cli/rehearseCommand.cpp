// mordhost rehearse POLICY EVENTS
#include <algorithm>

#include "cli/commandList.h"
#include "cli/comparedInput.h"
#include "compare/rehearsalOutput.h"
#include "output/title.h"
#include "policy/policyReader.h"
#include "system/filePath.h"
#include "system/hostSystem.h"

namespace mordhost {

namespace {

bool Changes(const RehearsedEvent& event) {
    return event.asked && std::any_of(event.replies.begin(), event.replies.end(),
                                      [&](uint32_t reply) { return reply != event.usual; });
}

class RehearseCommand final : public Command {
public:
    std::string_view Name() const override { return "rehearse"; }

    void Declare(Arguments& arguments) override {
        arguments.Positional("POLICY", m_policy);
        arguments.Positional("EVENTS", m_events);
        arguments.Choice("--format", m_format);
        arguments.Flag("--summary", m_summaryOnly);
        arguments.Text("--programs", m_programs);
        arguments.Text("--libraries", m_libraries);
    }

    void Run() override {
        const Policy policy = ReadPolicy(m_policy);
        PolicyPrograms programs(policy, m_programs.empty() ? OwnDirectory() : PathOf(m_programs));
        const auto libraries = m_libraries.empty() ? DefaultLibraryDirectory() : PathOf(m_libraries);
        RequireInputApart({&policy}, {&programs}, libraries, m_events);
        EventSource events(m_events);
        for (const ConnectionEvent& event : events.LookAhead()) { // an invalid one ends the run before any output
            if (event.program) {
                programs.FileOf(*event.program);
            }
        }
        Rehearsal rehearsal(policy, libraries);
        ComparedOutput compared(events);
        const auto output =
            m_format == OutputFormat::text
                ? MakeRehearsalText(compared.Stream(), rehearsal.Combinations(), TitleOf(m_policy, policy))
                : MakeRehearsalJson(compared.Stream(), rehearsal.Combinations(), m_format == OutputFormat::jsonl);
        output->Begin();
        compared.Run(
            [&](EventBatch& batch) {
                if (batch.events[0].program) { // it is alone in its batch
                    compared.Flush();          // the start of the program may take some time
                    programs.GiveId(batch.events[0]);
                }
                for (size_t i = 0; i < batch.count; ++i) {
                    const RehearsedEvent& rehearsed = rehearsal.Decide(batch.events[i]);
                    if (!m_summaryOnly && Changes(rehearsed)) {
                        output->Show(batch.events[i], rehearsed);
                    }
                }
            },
            [&] { output->End(rehearsal); });
    }

private:
    std::string m_policy;
    std::string m_events;
    std::string m_programs;
    std::string m_libraries;
    OutputFormat m_format = OutputFormat::text;
    bool m_summaryOnly = false;
};

} // namespace

std::unique_ptr<Command> MakeRehearseCommand() {
    return std::make_unique<RehearseCommand>();
}

} // namespace mordhost
