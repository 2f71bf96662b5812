// mordhost watch POLICY
#include "cli/commandList.h"
#include "cli/decisionRun.h"
#include "cli/liveArguments.h"
#include "policy/policyReader.h"

namespace mordhost {

namespace {

// The usual widths of the ends and processes, because the events are not known in advance.
Widths LiveWidths() {
    Widths widths = UsualWidths();
    Widen(widths, Texts{"", "127.100.100.100:40000", "127.100.100.100:8080", "python3.11", "web, smb", "", ""});
    return widths;
}

class WatchCommand final : public Command {
public:
    std::string_view Name() const override { return "watch"; }

    void Declare(Arguments& arguments) override {
        arguments.Positional("POLICY", m_policy);
        m_run.Declare(arguments);
        DeclareLiveOptions(arguments, m_live);
    }

    void Run() override {
        const Policy policy = ReadPolicy(m_policy);
        FileRoles roles;
        m_run.AddRoles(roles, policy);
        DecisionRun run(m_policy, policy, m_run, LiveWidths());
        run.Run([&] {
            run.Flush();
            WatchConnections(m_live, Stream::output, [&run](ConnectionEvent event) {
                run.Handle(std::move(event));
                run.Flush();
            });
        });
        RequireWholeTime(m_live);
    }

private:
    std::string m_policy;
    RunOptions m_run;
    LiveOptions m_live;
};

} // namespace

std::unique_ptr<Command> MakeWatchCommand() {
    return std::make_unique<WatchCommand>();
}

} // namespace mordhost
