#include "cli/runOptions.h"

#include <string_view>

#include "system/filePath.h"
#include "system/hostSystem.h"

namespace mordhost {

void RunOptions::Declare(Arguments& arguments) {
    arguments.Flag("--json", json, "Write one JSON object per line instead of the table");
    arguments.Text("--reports", "FILE", reports, "Write the library's reports to FILE");
    arguments.Text("--log", "FILE", log, "Write the library's log records to FILE");
    arguments.Flag("--no-log", noLog, "Disable the library's log records: faster, but without reasons");
    arguments.Exclude("--no-log", "--log");
    arguments.Text("--dots", "FILE", dots, "Keep the remaining dots in FILE, rewritten at each deletion");
    arguments.Text("--libraries", "DIR", libraries,
                   "Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory");
}

std::filesystem::path RunOptions::LibraryDirectory() const {
    return libraries.empty() ? DefaultLibraryDirectory() : PathOf(libraries);
}

void RunOptions::AddRoles(FileRoles& roles, const Policy& policy) const {
    for (const PolicyFile& file : policy.files) {
        if (file.holdsDots) {
            roles.ReadsDots(file.what, file.name);
        } else {
            roles.Reads(file.what, file.name);
        }
    }
    for (const std::string_view name : {"ZelkBase", "Ferrocore", "mordRev"}) {
        roles.Reads("the library", Utf8Of(LibraryDirectory() / LibraryFileName(name)));
    }
    roles.WritesStandardOutput();
    if (!reports.empty()) {
        roles.Writes("--reports", reports);
    }
    if (!log.empty()) {
        roles.Writes("--log", log);
    }
    if (!dots.empty()) {
        roles.Replaces("--dots", dots);
    }
    roles.WritesMessages();
}

} // namespace mordhost
