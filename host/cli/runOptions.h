// The options of all commands that decide events.
#pragma once

#include <filesystem>
#include <string>

#include "cli/command.h"
#include "cli/fileRoles.h"
#include "policy/policy.h"

namespace mordhost {

struct RunOptions {
    std::string libraries; // their directory; empty: the default
    std::string reports;   // file for the reports; empty: none
    std::string log;       // file for the log records; empty: none
    std::string dots;      // file for the remaining dots; empty: none
    bool json = false;
    bool noLog = false; // the library writes no records, and there are no reasons

    void Declare(Arguments& arguments);

    std::filesystem::path LibraryDirectory() const;

    // Adds the files that a run under `policy` reads and writes. Throws FileError for conflicting files.
    void AddRoles(FileRoles& roles, const Policy& policy) const;
};

} // namespace mordhost
