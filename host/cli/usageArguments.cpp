#include "cli/usageArguments.h"

#include "cli/runOptions.h"
#include "policy/eventSource.h"
#include "system/fileError.h"

namespace mordhost {

void UsageArguments::Declare(Arguments& arguments) {
    arguments.Positionals("EVENTS", events);
    arguments.Choice("--format", format);
    arguments.Text("--libraries", libraries);
}

SessionOptions UsageArguments::Session() const {
    RunOptions options;
    options.libraries = libraries;
    return options.Session();
}

void UsageArguments::Require(std::string_view command, const Policy& policy) const {
    if (events.empty()) {
        throw FileError(std::string(command) + " needs EVENTS, a file of events or - for the standard input");
    }
    FileRoles roles;
    for (const std::string& name : events) {
        if (name == EventSource::standardInput) {
            roles.ReadsStandardInput("the standard input");
        } else {
            roles.Reads("the events", name);
        }
    }
    RunOptions options;
    options.libraries = libraries;
    options.AddRoles(roles, policy);
}

} // namespace mordhost
