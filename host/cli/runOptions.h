// The options of all commands that decide events.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "cli/command.h"
#include "cli/fileRoles.h"
#include "decide/decisionSession.h"
#include "output/format.h"
#include "policy/policy.h"

namespace mordhost {

struct RunOptions {
    std::string libraries; // their directory; empty: the default
    std::string reports;   // file for the reports; empty: none
    std::string log;       // file for the log records; empty: none
    std::string dots;      // file for the remaining dots; empty: none
    OutputFormat format = OutputFormat::text;
    bool noDuration = false;         // the output has no durations
    std::optional<Failure> dotsDown; // every query for dots fails so
    bool noLog = false;              // the library writes no records, and there are no reasons

    void Declare(Arguments& arguments);

    std::filesystem::path LibraryDirectory() const;
    SessionOptions Session() const;

    // Adds the files that a run under `policy` reads and writes. Throws FileError for conflicting files.
    void AddRoles(FileRoles& roles, const Policy& policy) const;
};

} // namespace mordhost
