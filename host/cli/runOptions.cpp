#include "cli/runOptions.h"

#include <string_view>

#include "system/filePath.h"
#include "system/hostSystem.h"

namespace mordhost {

void RunOptions::Declare(Arguments& arguments) {
    arguments.Choice("--format", format);
    arguments.Flag("--no-duration", noDuration);
    arguments.Text("--reports", reports);
    arguments.Text("--log", log);
    arguments.Flag("--no-log", noLog);
    arguments.Text("--dots", dots);
    arguments.Choice("--dots-down", dotsDown);
    arguments.Text("--libraries", libraries);
}

SessionOptions RunOptions::Session() const {
    return {LibraryDirectory(), !noLog, dotsDown};
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
