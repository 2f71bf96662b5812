// mordhost watch POLICY
#include "app/commands.h"
#include "policy/policyReader.h"

namespace mordhost {

namespace {

// Room for the ends and processes that are usual, since those to come are not known.
Widths LiveWidths() {
    Widths widths = UsualWidths();
    Widen(widths, Texts{"", "127.100.100.100:40000", "127.100.100.100:8080", "python3.11", "web, smb", "", ""});
    return widths;
}

} // namespace

void Watch(const WatchOptions& options) {
    const Policy policy = ReadPolicy(options.policy);
    FileRoles roles;
    AddRoles(roles, policy, options.run);
    DecisionRun run(policy, options.run, TitleOf(options.policy, policy), LiveWidths());
    run.Run([&] {
        run.Flush();
        WatchConnections(options.live, [&run](ConnectionEvent event) {
            run.Handle(std::move(event));
            run.Flush();
        });
    });
}

} // namespace mordhost
