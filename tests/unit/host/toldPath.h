// What the library tells of a process that runs.
#pragma once

#include <filesystem>
#include <string>

namespace mordhostTest {

// The path that a report has of a running process whose program is in `file`, which is waiter32 or waiter64; empty
// where the library of this build does not find it out.
std::string ToldPath(const std::filesystem::path& file);

} // namespace mordhostTest
