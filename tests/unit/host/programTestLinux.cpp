// What a started program inherits. Linux only.
#include <fstream>
#include <set>

#include <gtest/gtest.h>
#include <unistd.h>

#include "system/program.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;

namespace {

// The open descriptors of the process.
std::set<std::string> OpenDescriptors(uint32_t process) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
        names.insert(Utf8Of(entry.path().filename()));
    }
    return names;
}

} // namespace

TEST(ProgramOnLinux, InheritsOnlyItsStandardStreams) {
    const kit::TemporaryDirectory directory;
    std::ofstream open(directory.Name("open")); // programs inherit it by default
    const Program first(PathOf(MORDHOST_PROGRAMS) / "waiter32");
    const Program second(PathOf(MORDHOST_PROGRAMS) / "waiter64");
    const std::set<std::string> standard = {"0", "1", "2"};
    EXPECT_EQ(OpenDescriptors(first.Id()), standard);
    EXPECT_EQ(OpenDescriptors(second.Id()), standard);
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(first.Id()) + "/fd/2"), "/dev/null");
}

TEST(ProgramOnLinux, ReceivesNoSignalsOfTheTerminal) {
    const Program program(PathOf(MORDHOST_PROGRAMS) / "waiter32");
    EXPECT_EQ(getpgid(static_cast<pid_t>(program.Id())), static_cast<pid_t>(program.Id()));
    EXPECT_NE(getpgrp(), static_cast<pid_t>(program.Id()));
}
