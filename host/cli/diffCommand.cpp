// mordhost diff OLD NEW EVENTS
#include <iostream>

#include "cli/batchReading.h"
#include "cli/commandList.h"
#include "cli/comparedInput.h"
#include "cli/exitCode.h"
#include "cli/hostVersion.h"
#include "compare/comparison.h"
#include "compare/differenceOutput.h"
#include "compare/localSide.h"
#include "compare/remoteSide.h"
#include "output/requireWritten.h"
#include "output/title.h"
#include "policy/policyPrograms.h"
#include "policy/policyReader.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/inputStream.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

class DiffCommand final : public Command {
public:
    std::string_view Name() const override { return "diff"; }

    void Declare(Arguments& arguments) override {
        arguments.Positional("OLD", m_before);
        arguments.Positional("NEW", m_after);
        arguments.Positional("EVENTS", m_events);
        arguments.Choice("--format", m_format);
        arguments.Text("--programs", m_programs);
        arguments.Text("--libraries", m_libraries);
    }

    int Code() const override { return m_hasOtherVerdict ? EXIT_NO : EXIT_DONE; }

    void Run() override {
        const Policy before = ReadPolicy(m_before);
        const SourceText source(m_after, InputStream(m_after).ReadAll());
        const Policy after = ReadPolicy(source);
        const auto directory = m_programs.empty() ? OwnDirectory() : PathOf(m_programs);
        PolicyPrograms programsBefore(before, directory);
        PolicyPrograms programsAfter(after, directory);
        const auto libraries = m_libraries.empty() ? DefaultLibraryDirectory() : PathOf(m_libraries);
        RequireInputApart({&before, &after}, {&programsBefore, &programsAfter}, libraries, m_events);
        EventSource events(m_events);
        for (const ConnectionEvent& event : events.LookAhead()) { // an invalid one ends the run before any output
            if (event.program) {
                programsBefore.FileOf(*event.program);
                programsAfter.FileOf(*event.program);
            }
        }
        // The library has one object per process, which keeps what a policy has set.
        RemoteSide sideAfter(OwnProgram());
        sideAfter.Start(source, libraries);
        LocalSide sideBefore(before, libraries, std::string(hostVersion));
        Comparison comparison(sideBefore, before.dots, sideAfter, after.dots);
        ComparedOutput compared(events);
        const auto output =
            m_format == OutputFormat::text
                ? MakeDifferenceText(compared.Stream(), {TitleOf(m_before, before), TitleOf(m_after, after)})
                : MakeDifferenceJson(compared.Stream(), m_format == OutputFormat::jsonl);
        output->Begin();
        EventBatch others; // the batch with the process ids of the new policy's programs
        compared.Run(
            [&](EventBatch& batch) {
                const bool hasProgram = batch.events[0].program.has_value(); // it is alone then
                if (hasProgram) {
                    compared.Flush(); // the start of the program may take some time
                    others.count = 0;
                    others.Add() = batch.events[0];
                    programsBefore.GiveId(batch.events[0]);
                    programsAfter.GiveId(others.events[0]);
                }
                comparison.Decide(batch, hasProgram ? others : batch,
                                  [&](const Difference& difference) { output->Show(difference); });
            },
            [&] { output->End(comparison.Figures()); });
        m_hasOtherVerdict = comparison.Figures().verdictChanges > 0;
    }

private:
    std::string m_before; // the old policy
    std::string m_after;
    std::string m_events;
    std::string m_programs;
    std::string m_libraries;
    OutputFormat m_format = OutputFormat::text;
    bool m_hasOtherVerdict = false;
};

} // namespace

std::unique_ptr<Command> MakeDiffCommand() {
    return std::make_unique<DiffCommand>();
}

} // namespace mordhost
