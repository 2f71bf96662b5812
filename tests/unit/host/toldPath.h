// The path of a process in reports of the library.
#pragma once

#include <filesystem>
#include <string>

namespace mordhostTest {

// Starts the program `file`, waiter32 or waiter64, and returns its path in a report. Empty if the library of this build
// does not find the path.
std::string ToldPath(const std::filesystem::path& file);

} // namespace mordhostTest
