// mordhost unused POLICY EVENTS...
#include <iostream>

#include "cli/commandList.h"
#include "cli/exitCode.h"
#include "cli/shownRecording.h"
#include "cli/usageArguments.h"
#include "output/requireWritten.h"
#include "output/usageOutput.h"
#include "policy/memoryDotStore.h"
#include "policy/policyReader.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

class UnusedCommand final : public Command {
public:
    std::string_view Name() const override { return "unused"; }
    int Code() const override { return m_code; }

    void Declare(Arguments& arguments) override {
        arguments.Positional("POLICY", m_policy);
        m_usage.Declare(arguments);
        arguments.Flag("--all", m_all);
        arguments.Flag("--strict", m_strict);
    }

    void Run() override {
        const Policy policy = ReadPolicy(m_policy);
        m_usage.Require(Name(), policy);
        FileRecording files(m_usage.events, FileRecording::Use::once);
        ShownRecording recording(files);
        MemoryDotStore dots(policy.dots);
        DecisionSession session(policy, dots, m_usage.Session());
        PolicyUse use(policy);
        const bool stopped = !AddAll(recording, session, use);
        recording.Finish();
        WriteUse(std::cout, use, m_all, m_usage.format);
        RequireWritten(std::cout, standardOutputName);
        if (stopped) {
            throw Stopped("interrupted by " + StopCause() + ": the following events are not counted");
        }
        for (const PartUse& part : use.Parts()) {
            if (m_strict && !part.IsUsed()) {
                m_code = EXIT_NO;
            }
        }
    }

private:
    // Returns false after a stop request.
    static bool AddAll(Recording& recording, DecisionSession& session, PolicyUse& use) {
        try {
            recording.Rewind();
            ConnectionEvent event;
            while (recording.Next(event)) {
                use.Add(session.Decide(std::move(event)));
            }
            return true;
        } catch (const Stopped&) {
            return false;
        }
    }

    std::string m_policy;
    UsageArguments m_usage;
    bool m_all = false;
    bool m_strict = false;
    int m_code = EXIT_DONE;
};

} // namespace

std::unique_ptr<Command> MakeUnusedCommand() {
    return std::make_unique<UnusedCommand>();
}

} // namespace mordhost
