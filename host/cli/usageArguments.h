// The arguments that unused and suggest share.
#pragma once

#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/fileRoles.h"
#include "decide/decisionSession.h"
#include "output/format.h"
#include "policy/policy.h"

namespace mordhost {

struct UsageArguments {
    std::vector<std::string> events; // "-" for the standard input
    OutputFormat format = OutputFormat::text;
    std::string libraries; // their directory; empty: the default

    void Declare(Arguments& arguments);

    SessionOptions Session() const;

    // Throws FileError if there are no events, and if the run would write a file that it reads. `policy` may be empty.
    void Require(std::string_view command, const Policy& policy) const;
};

} // namespace mordhost
